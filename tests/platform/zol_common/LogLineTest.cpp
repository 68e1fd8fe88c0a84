#include "LibraryProcess.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using testing::MatchesRegex;
using testing::SizeIs;
using zoltest::LogLine;
using zoltest::logLines;
using zoltest::runLibrary;

std::vector<LogLine> linesAtLevel8(const zoltest::LibraryCall& call)
{
    return logLines(runLibrary(call, {{"ZOL_LOG_LEVEL", "8"}}).standardError);
}

TEST(LogLine, HasItsFieldsInOrder)
{
    const auto outcome = runLibrary({.text = "some text"}, {{"ZOL_LOG_LEVEL", "8"}});
    const auto lines = zoltest::split(outcome.standardError, '\n');
    const std::string timeAndThread =
        "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\\.[0-9]{6}[+-][0-9]{2}:[0-9]{2}\t[0-9]+";
    ASSERT_THAT(lines, SizeIs(5));
    EXPECT_THAT(lines[0], MatchesRegex(timeAndThread + "\tlog\t3\taFunction\tsome text"));
    EXPECT_THAT(lines[1], MatchesRegex(timeAndThread + "\tlog\t4\taFunction\tsome text"));
    EXPECT_THAT(lines[2], MatchesRegex(timeAndThread + "\tlog\t5\taFunction\tsome text"));
    EXPECT_THAT(lines[3],
                MatchesRegex(timeAndThread + "\ttrace\t9\tfolder/File\\.cpp:42 aFunction\tsome text"));
    EXPECT_THAT(lines[4],
                MatchesRegex(timeAndThread + "\ttrace_v2\t14\tfolder/File\\.cpp:42 aFunction\tsome text"));
}

TEST(LogLine, KeepsATextInItsFieldByEscapes)
{
    struct Row
    {
        std::string text;
        std::string escaped;
    };
    for (const auto& [text, escaped] : std::vector<Row>{
             {"", ""},
             {"a b", "a b"},
             {"a\nb", "a\\nb"},
             {"\n\n", "\\n\\n"},
             {"a\tb", "a\\tb"},
             {"a\rb", "a\\rb"},
             {"\x01\x1b\x1f\x7f", R"(\x01\x1b\x1f\x7f)"},
             {"a\\nb", "a\\\\nb"},
             {"\\", "\\\\"},
             {"\xc3\xa4\xff", "\xc3\xa4\xff"},
             {"100% {} %s", "100% {} %s"},
         })
    {
        const auto lines = linesAtLevel8({.function = "logOneLine", .text = text});
        ASSERT_THAT(lines, SizeIs(1)) << escaped;
        EXPECT_EQ(lines[0].text, escaped);
    }
}

TEST(LogLine, ShowsANullByteOfTheText)
{
    const auto lines = linesAtLevel8({.function = "logNullByte", .text = "a"});
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0].text, "a\\x00a");
}

TEST(LogLine, EscapesThePlaceToo)
{
    const auto lines = linesAtLevel8({.function = "logPlaceWithControlCharacters"});
    ASSERT_THAT(lines, SizeIs(1));
    EXPECT_EQ(lines[0].place, "a\\tfile\\n.cpp:1 a\\\\function");
}

TEST(LogLine, HoldsALongTextWhole)
{
    for (const std::size_t length : {511U, 512U, 513U, 100'000U})
    {
        const auto lines = linesAtLevel8({.function = "logOneLine", .text = std::string(length, 'x')});
        ASSERT_THAT(lines, SizeIs(1));
        EXPECT_EQ(lines[0].text, std::string(length, 'x'));
    }
}

} // namespace
