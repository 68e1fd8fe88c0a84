#include "filem/shell/Columns.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using zolhost::filem::inColumns;

TEST(Columns, AreReadDownwards)
{
    EXPECT_EQ(inColumns({"1", "2", "3", "4", "5"}, 8, 10), "1  3  5\n2  4\n");
}

TEST(Columns, AreAsWideAsTheWidestText)
{
    EXPECT_EQ(inColumns({"a", "long", "b"}, 12, 10), "a     b\nlong\n");
}

TEST(Columns, CountColumnsOfTheTerminalAndNotBytes)
{
    EXPECT_EQ(inColumns({"ä", "日", "b"}, 20, 10), "ä   日  b\n");
}

TEST(Columns, LeaveTheLastColumnFree)
{
    EXPECT_EQ(inColumns({"aaa", "bbb"}, 9, 10), "aaa  bbb\n");
    EXPECT_EQ(inColumns({"aaa", "bbb"}, 8, 10), "aaa\nbbb\n");
}

TEST(Columns, GiveATextThatIsTooWideALineOfItsOwn)
{
    EXPECT_EQ(inColumns({"much too wide", "b"}, 5, 10), "much too wide\nb\n");
}

TEST(Columns, TellHowManyHaveNoPlace)
{
    EXPECT_EQ(inColumns({"1", "2", "3", "4", "5"}, 2, 3), "1\n2\nand 3 more\n");
    EXPECT_EQ(inColumns({"1", "2", "3"}, 2, 3), "1\n2\n3\n");
}

TEST(Columns, AreEmptyForNothing)
{
    EXPECT_EQ(inColumns({}, 80, 10), "");
}
