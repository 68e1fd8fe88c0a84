#include "report/Table.h"

#include <gtest/gtest.h>
#include <sstream>

namespace
{

using zolbench::figure;

TEST(Figure, HasThreeDigitsThatCount)
{
    EXPECT_EQ(figure(0.01), "0.0100");
    EXPECT_EQ(figure(0.456), "0.46");
    EXPECT_EQ(figure(4.567), "4.57");
    EXPECT_EQ(figure(45.67), "45.7");
    EXPECT_EQ(figure(456.7), "457");
    EXPECT_EQ(figure(45678), "45,700");
    EXPECT_EQ(figure(1234567), "1,230,000");
}

TEST(Figure, IsADashWhereThereIsNone)
{
    EXPECT_EQ(figure(0), "-");
}

TEST(Table, AlignsTextLeftAndFiguresRight)
{
    zolbench::Table table({"work", "ns"});
    table.add({"browse", "1,000"});
    table.add({"size", "5"});
    std::ostringstream text;
    text << table;
    EXPECT_EQ(text.str(), "| work   |    ns |\n"
                          "| ------ | -----:|\n"
                          "| browse | 1,000 |\n"
                          "| size   |     5 |\n");
}

} // namespace
