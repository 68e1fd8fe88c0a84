#include "filem/Interpreter.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace zolhost::filem;

namespace
{

std::string whyRefused(const std::string& line)
{
    try
    {
        parseLine(line);
        return "accepted";
    }
    catch (const CommandFailure& failure)
    {
        EXPECT_EQ(failure.code(), ExitCode::Usage);
        return failure.what();
    }
}

} // namespace

TEST(Interpreter, SplitsALineIntoCommandsWithTheirFilters)
{
    using Line = std::vector<Pipeline>;
    EXPECT_EQ(parseLine(""), Line{});
    EXPECT_EQ(parseLine(" ; ; # nothing"), Line{});
    EXPECT_EQ(parseLine("ls -l a"), (Line{{{"ls", "-l", "a"}, {}}}));
    EXPECT_EQ(parseLine("ls; pwd;"), (Line{{{"ls"}, {}}, {{"pwd"}, {}}}));
    EXPECT_EQ(parseLine("ls|match 'a b' | count; up"),
              (Line{{{"ls"}, {{"match", "a b"}, {"count"}}}, {{"up"}, {}}}));
}

TEST(Interpreter, RefusesABarWithoutTwoSides)
{
    for (const std::string line : {"|", "ls |", "| count", "ls | | count", "ls | ; pwd"})
    {
        EXPECT_EQ(whyRefused(line), "a bar has nothing on one side") << line;
    }
    EXPECT_EQ(whyRefused("ls 'a"), "a single quote has no end");
}
