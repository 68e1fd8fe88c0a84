#pragma once

#include "StagedChanges.h"
#include "StagingTest.h"

#include "staging/Preview.h"

#include <cstdio>
#include <string>
#include <vector>

/// Previews of changes on a tree, in words.
class PreviewTest : public zoltest::StagingTest
{
protected:
    using Texts = std::vector<std::string>;

    /// The items as "outlook name: why", names relative to the tree.
    Texts items(const zolhost::Preview& preview) const
    {
        const std::vector<std::string> outlooks = {"done", "nothing", "fails", "not reached"};
        Texts texts;
        for (const auto& item : preview.items)
        {
            texts.push_back(outlooks[static_cast<std::size_t>(item.outlook)] + " " + relative(item.path) +
                            (item.why.empty() ? "" : ": ") + relative(item.why));
        }
        return texts;
    }

    /// "name mode", the mode in octal digits, with a plus sign in front of what is new.
    Texts made(const zolhost::Preview& preview) const
    {
        Texts texts;
        for (const auto& made : preview.made)
        {
            std::string mode(5, '0');
            snprintf(mode.data(), mode.size(), "%04o", made.mode);
            texts.push_back((made.isThere ? "" : "+") + relative(made.path) + " " + mode.substr(0, 4));
        }
        return texts;
    }

    Texts removed(const zolhost::Preview& preview) const
    {
        Texts texts;
        for (const auto& removed : preview.removed)
        {
            texts.push_back(relative(removed.path));
        }
        return texts;
    }

    /// Takes the preview, commits and compares. Returns the preview.
    zolhost::Preview committed()
    {
        auto preview = changes.preview();
        const zoltest::Expectation expectation(preview, tree.path());
        changes.commit();
        EXPECT_EQ(zoltest::snapshotOf(tree.path()), expectation.after());
        return preview;
    }
};
