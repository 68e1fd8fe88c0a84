#include "filem/output/LineFilter.h"

#include "filem/ExitCode.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

using namespace zolhost::filem;

namespace
{

std::string filtered(const std::vector<std::string>& words, const std::string& text)
{
    std::ostringstream result;
    const auto filter = LineFilter::make(words, result);
    std::ostream(filter.get()) << text;
    filter->end();
    return result.str();
}

std::string whyRefused(const std::vector<std::string>& words)
{
    std::ostringstream result;
    try
    {
        LineFilter::make(words, result);
        return "accepted";
    }
    catch (const CommandFailure& failure)
    {
        EXPECT_EQ(failure.code(), ExitCode::Usage);
        return failure.what();
    }
}

} // namespace

TEST(LineFilter, GivesTheLinesThatMatchTheOthersOrTheirNumber)
{
    EXPECT_EQ(filtered({"match", "b.r"}, "foo\nbar\nabxr\n"), "bar\nabxr\n");
    EXPECT_EQ(filtered({"except", "^b"}, "foo\nbar\nlast"), "foo\nlast\n");
    EXPECT_EQ(filtered({"count"}, "foo\nbar\nlast"), "3\n");
    EXPECT_EQ(filtered({"count"}, ""), "0\n");
}

TEST(LineFilter, IsRefusedWithWrongArguments)
{
    EXPECT_EQ(whyRefused({"grep", "x"}), "there is no filter grep; there are match, except and count");
    EXPECT_EQ(whyRefused({"match"}), "usage: | match REGEX");
    EXPECT_EQ(whyRefused({"count", "x"}), "usage: | count");
    EXPECT_EQ(whyRefused({"match", "("}), "the regular expression is not valid");
}
