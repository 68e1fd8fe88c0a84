#include "filem/shell/HistoryFile.h"

#include "support/TemporaryTree.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

using zolhost::filem::HistoryFile;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

class HistoryFileTest : public testing::Test
{
protected:
    Texts loaded() const { return HistoryFile(tree.path("state/history")).load(); }
    std::string add(const std::string& line) const
    {
        return HistoryFile(tree.path("state/history")).add(line);
    }

    std::size_t linesOnDisk() const
    {
        std::ifstream file(tree.path("state/history"));
        std::size_t count = 0;
        for (std::string line; std::getline(file, line);)
        {
            ++count;
        }
        return count;
    }

    TemporaryTree tree;
};

} // namespace

TEST_F(HistoryFileTest, GivesTheLinesOfEarlierSessionsTheOldestFirst)
{
    EXPECT_EQ(loaded(), Texts());
    EXPECT_EQ(add("ls"), "");
    EXPECT_EQ(add("rm 'größe'"), "");
    EXPECT_EQ(loaded(), (Texts{"ls", "rm 'größe'"}));
}

TEST_F(HistoryFileTest, TakesAwayFromOthersWhatTheyCouldRead)
{
    tree.file("state/history", "ls\n");
    tree.chmod("state/history", 0644);
    EXPECT_EQ(add("pwd"), "");
    EXPECT_EQ(tree.mode("state/history"), 0600U);
}

TEST_F(HistoryFileTest, LeavesOutWhatIsNoText)
{
    tree.file("state/history", "ls\n\xff\xfe\n\npwd\n");
    EXPECT_EQ(loaded(), (Texts{"ls", "pwd"}));
}

TEST_F(HistoryFileTest, IsCutToTheLastLinesOnceItIsFarTooLong)
{
    std::string text;
    for (std::size_t i = 0; i < 2 * HistoryFile::LENGTH + 1; ++i)
    {
        text += "command " + std::to_string(i) + "\n";
    }
    tree.file("state/history", text);
    const auto lines = loaded();
    ASSERT_EQ(lines.size(), HistoryFile::LENGTH);
    EXPECT_EQ(lines.front(), "command 1001");
    EXPECT_EQ(lines.back(), "command 2000");
    EXPECT_EQ(linesOnDisk(), HistoryFile::LENGTH);
    EXPECT_EQ(loaded(), lines);
    EXPECT_EQ(tree.listing(), (Texts{"d state", "f state/history " + std::to_string(13 * 1000)}));
}

TEST_F(HistoryFileTest, IsLeftAloneWhileItIsNotFarTooLong)
{
    std::string text;
    for (std::size_t i = 0; i < HistoryFile::LENGTH + 1; ++i)
    {
        text += "command " + std::to_string(i) + "\n";
    }
    tree.file("state/history", text);
    EXPECT_EQ(loaded().size(), HistoryFile::LENGTH);
    EXPECT_EQ(linesOnDisk(), HistoryFile::LENGTH + 1);
}

TEST_F(HistoryFileTest, TellsWhyALineCannotBeKept)
{
    tree.file("state");
    EXPECT_EQ(add("ls"), "Not a directory");
    EXPECT_EQ(loaded(), Texts());
}

TEST_F(HistoryFileTest, KeepsNothingWithoutAFile)
{
    const HistoryFile history(std::nullopt);
    EXPECT_EQ(history.add("ls"), "");
    EXPECT_EQ(history.load(), Texts());
}
