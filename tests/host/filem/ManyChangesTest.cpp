#include "Filem.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <string>

namespace
{

// A thousand directories in ten of a hundred, and a directory with files of two kinds.
class ManyChangesTest : public Filem
{
protected:
    ManyChangesTest()
    {
        for (int i = 0; i < 200; ++i)
        {
            tree.file("logs/" + std::to_string(i) + (i % 4 == 0 ? ".txt" : ".log"));
        }
        tree.file("logs/deep/1.log");
        commands = "rm --matching '[0-9]+\\.(log|txt)' logs\n";
        for (int i = 0; i < 1000; ++i)
        {
            commands += "mkdir -p new" + std::to_string(i / 100) + "/" + std::to_string(i) + "\n";
        }
    }

    std::string commands;
};

} // namespace

TEST_F(ManyChangesTest, OfOneTransactionAreAllOnDiskAfterTheCommit)
{
    const Outcome outcome = script(commands + "commit | match :\n");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_THAT(outcome.out,
                testing::StartsWith("1210 done: 1010 directories made, 200 files (200) removed, "));

    Texts expected = {"d logs", "d logs/deep", "f logs/deep/1.log 1"};
    for (int i = 0; i < 1000; ++i)
    {
        const std::string parent = "new" + std::to_string(i / 100);
        expected.push_back("d " + parent + "/" + std::to_string(i));
        EXPECT_EQ(tree.mode(parent + "/" + std::to_string(i)), 0770U) << i;
    }
    for (int i = 0; i < 10; ++i)
    {
        expected.push_back("d new" + std::to_string(i));
    }
    std::ranges::sort(expected);
    EXPECT_EQ(tree.listing(), expected);
}

TEST_F(ManyChangesTest, OfOneTransactionLeaveNoTraceAfterAnAbort)
{
    const auto before = tree.listing();
    const std::string warning = "filem: the expression matches every file of " + root + ",FileGroup=logs\n";
    EXPECT_EQ(script(commands + "count logs FileInformation\nabort\ncount logs FileInformation\n"),
              (Outcome{0, "0\n200\n", warning}));
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(ManyChangesTest, OfOneTransactionLeaveNoTraceAfterAFailure)
{
    const auto before = tree.listing();
    EXPECT_EQ(script(commands + "delete none\ncommit\n").exitCode, 4);
    EXPECT_EQ(tree.listing(), before);
}
