#include "Filem.h"

#include <algorithm>
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
        commands = "remove-file FileGroup=logs '[0-9]+\\.(log|txt)'\n";
        for (int i = 0; i < 1000; ++i)
        {
            commands +=
                "create FileGroup=new" + std::to_string(i / 100) + ",FileGroup=" + std::to_string(i) + "\n";
        }
    }

    std::string commands;
};

} // namespace

TEST_F(ManyChangesTest, OfOneTransactionAreAllOnDiskAfterTheCommit)
{
    EXPECT_EQ(script(commands + "commit\n"), (Outcome{0, "true\n", ""}));

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
    EXPECT_EQ(script(commands +
                     "count FileGroup=logs FileInformation\nabort\ncount FileGroup=logs FileInformation\n"),
              (Outcome{0, "true\n0\n200\n", ""}));
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(ManyChangesTest, OfOneTransactionLeaveNoTraceAfterAFailure)
{
    const auto before = tree.listing();
    EXPECT_EQ(script(commands + "delete FileGroup=none\ncommit\n").exitCode, 4);
    EXPECT_EQ(tree.listing(), before);
}
