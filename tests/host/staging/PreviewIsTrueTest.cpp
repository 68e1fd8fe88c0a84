#include "RandomTree.h"
#include "StagedChanges.h"

#include "engine/Refusal.h"
#include "staging/Receipt.h"
#include "support/RecordedLog.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <string>

using zolhost::Preview;
using zolhost::Receipt;
using zoltest::RandomTree;
using zoltest::StagedChanges;
using Outlook = Preview::Item::Outlook;
using Result = Receipt::Item::Result;

namespace
{

constexpr unsigned CASES = 400;

void stageAny(RandomTree& random, StagedChanges& changes)
{
    try
    {
        switch (random.number(9))
        {
        case 0:
            changes.removeDirectory(random.directory());
            break;
        case 1:
            changes.removeTree(random.once(4) ? random.below(random.place()) + random.newName()
                                              : random.directory());
            break;
        case 2:
        case 3:
        case 4:
            changes.removeFile(random.file());
            break;
        case 5:
            changes.removeFile(random.below(random.directory()) + random.newName());
            break;
        default:
            changes.makeDirectory(random.below(random.place()) + random.newName());
            break;
        }
    }
    catch (const zolhost::Refusal&)
    {
        // then it isn't staged
    }
    catch (const std::out_of_range&)
    {
        // the tree has no such thing
    }
}

/// What came up in all cases together, so that none of it is missing unnoticed.
struct Counts
{
    std::size_t made = 0;
    std::size_t modes = 0;
    std::size_t removed = 0;
    std::size_t goneAgain = 0;
    std::size_t cancelled = 0;
    std::map<Outlook, std::size_t> outlooks;

    void add(const Preview& preview)
    {
        for (const auto& entry : preview.made)
        {
            ++(entry.isThere ? modes : made);
        }
        removed += preview.removed.size();
        cancelled += preview.cancelled.size();
        for (const auto& item : preview.items)
        {
            ++outlooks[item.outlook];
            goneAgain += item.isRemovedAgain ? 1 : 0;
        }
    }
};

void expectReceiptOf(const Preview& preview, const Receipt& receipt)
{
    bool isComplete = true;
    for (std::size_t i = 0; i < preview.items.size(); ++i)
    {
        const auto& item = receipt.items[i];
        const Outlook outlook = preview.items[i].outlook;
        const bool remains = item.result == Result::Remains;
        isComplete = isComplete && !remains;
        EXPECT_EQ(item.path, preview.items[i].path);
        EXPECT_EQ(remains, !item.why.empty()) << item.path << ": " << item.why;
        if (outlook == Outlook::Done || outlook == Outlook::Fails)
        {
            EXPECT_EQ(remains, outlook == Outlook::Fails) << item.path << ": " << item.why;
        }
        if (outlook == Outlook::NothingToDo)
        {
            EXPECT_FALSE(remains) << item.path << ": " << item.why;
        }
    }
    EXPECT_EQ(receipt.isComplete(), isComplete);
    const auto made =
        std::ranges::count_if(preview.made, [](const Preview::Made& entry) { return !entry.isThere; });
    EXPECT_EQ(receipt.directoriesMade, made);
    EXPECT_EQ(receipt.directoriesRemoved + receipt.filesRemoved + receipt.othersRemoved,
              preview.removed.size());
}

void tryOn(RandomTree& random, Counts& counts)
{
    const std::string root = random.tree().path();
    const zoltest::ScopedMask mask(random.once(2) ? 022 : 077);
    StagedChanges changes(random.tree());
    for (std::size_t i = 1 + random.number(15); i > 0; --i)
    {
        stageAny(random, changes);
    }
    for (std::size_t i = random.once(2) ? random.number(5) : 0; i > 0; --i)
    {
        random.disturb();
    }
    const Preview preview = changes.preview();
    const zoltest::Expectation expectation(preview, root);
    const Receipt::Before before(preview);

    changes.commit();

    EXPECT_EQ(zoltest::snapshotOf(root), expectation.after());
    expectReceiptOf(preview, receiptOf(preview, before));
    counts.add(preview);
}

} // namespace

TEST(Preview, IsWhatTheCommitDoesToAnyTree)
{
    const zoltest::RecordedLog unread(0);
    Counts counts;
    for (unsigned seed = 0; seed < CASES && !testing::Test::HasFailure(); ++seed)
    {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTree random(seed);
        EXPECT_NO_THROW(tryOn(random, counts));
    }
    for (const std::size_t count : {counts.made, counts.modes, counts.removed, counts.goneAgain,
                                    counts.cancelled, counts.outlooks[Outlook::NothingToDo],
                                    counts.outlooks[Outlook::Fails], counts.outlooks[Outlook::NotReached]})
    {
        EXPECT_GE(count, CASES / 20);
    }
}
