#pragma once

#include "StagedChanges.h"
#include "support/TemporaryTree.h"

#include <gtest/gtest.h>
#include <string>

namespace zoltest
{

/// A tree and a transaction on it.
class StagingTest : public testing::Test
{
protected:
    /// The text with paths relative to the tree, wherever that stands.
    std::string relative(std::string text) const
    {
        const std::string prefix = tree.path() + "/";
        for (auto at = text.find(prefix); at != std::string::npos; at = text.find(prefix))
        {
            text.erase(at, prefix.size());
        }
        return text;
    }

    ScopedMask mask{022};
    TemporaryTree tree;
    StagedChanges changes{tree};
};

} // namespace zoltest
