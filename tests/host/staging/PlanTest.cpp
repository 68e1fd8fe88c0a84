#include "staging/Plan.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using zolhost::Plan;
using How = Plan::Cancelled::How;
using Cancelled = std::vector<Plan::Cancelled>;
using Paths = Plan::Paths;

TEST(Plan, IsEmptyAtFirstAndAfterItIsCleared)
{
    Plan plan;
    EXPECT_TRUE(plan.isEmpty());
    plan.makeDirectory("/r/a/");
    plan.removeTree("/r/b/");
    plan.removeFile("/r/c");
    plan.removeTree("/r/a/");
    EXPECT_FALSE(plan.isEmpty());
    plan.clear();
    EXPECT_TRUE(plan.isEmpty());
    EXPECT_EQ(plan.cancelled(), Cancelled{});
}

TEST(Plan, HoldsEachKindOfRequestOnce)
{
    for (const auto request : {&Plan::makeDirectory, &Plan::removeTree, &Plan::removeFile})
    {
        Plan plan;
        (plan.*request)("/r/a");
        (plan.*request)("/r/a");
        EXPECT_FALSE(plan.isEmpty());
        EXPECT_EQ(plan.madeDirectories().size() + plan.removedTrees().size() + plan.removedFiles().size(),
                  1U);
    }
}

TEST(Plan, DirectoryThatIsMadeAndThenRemovedCancelsOut)
{
    Plan plan;
    plan.makeDirectory("/r/a/");
    plan.removeDirectory("/r/a/");
    plan.makeDirectory("/r/b/");
    plan.removeTree("/r/b/");
    EXPECT_TRUE(plan.isEmpty());
    EXPECT_EQ(plan.cancelled(),
              (Cancelled{{"/r/a/", How::MadeThenRemoved}, {"/r/b/", How::MadeThenRemoved}}));
}

TEST(Plan, DirectoryThatIsRemovedAndThenMadeCancelsOut)
{
    Plan plan;
    plan.removeDirectory("/r/a/");
    plan.makeDirectory("/r/a/");
    EXPECT_TRUE(plan.isEmpty());
    EXPECT_EQ(plan.cancelled(), (Cancelled{{"/r/a/", How::RemovedThenMade}}));
}

TEST(Plan, RemovedDirectoryTakesBackWhatWasToBeMadeBelowIt)
{
    Plan plan;
    plan.makeDirectory("/r/a/b/");
    plan.makeDirectory("/r/a/b/c/");
    plan.makeDirectory("/r/ab/");
    plan.removeDirectory("/r/a/");
    EXPECT_EQ(plan.madeDirectories(), Paths{"/r/ab/"});
    EXPECT_EQ(plan.removedTrees(), Paths{"/r/a/"});
    EXPECT_EQ(plan.cancelled(),
              (Cancelled{{"/r/a/b/", How::MadeThenRemoved}, {"/r/a/b/c/", How::MadeThenRemoved}}));
}

TEST(Plan, RemovedTreeLeavesWhatIsToBeMadeBelowIt)
{
    Plan plan;
    plan.makeDirectory("/r/a/b/");
    plan.removeTree("/r/a/");
    EXPECT_EQ(plan.madeDirectories(), Paths{"/r/a/b/"});
    EXPECT_EQ(plan.removedTrees(), Paths{"/r/a/"});
}

TEST(Plan, FileFormDoesNotCancelTheDirectory)
{
    Plan plan;
    plan.makeDirectory("/r/a/");
    plan.removeTree("/r/a");
    plan.removeFile("/r/a");
    EXPECT_EQ(plan.madeDirectories(), Paths{"/r/a/"});
    EXPECT_EQ(plan.removedTrees(), Paths{"/r/a"});
    EXPECT_EQ(plan.removedFiles(), Paths{"/r/a"});
    EXPECT_EQ(plan.cancelled(), Cancelled{});
}

TEST(Plan, WorksOffDirectoriesFromTheTopDown)
{
    Plan plan;
    plan.makeDirectory("/r/a/b/");
    plan.makeDirectory("/r/a/");
    EXPECT_EQ(*plan.madeDirectories().begin(), "/r/a/");
}
