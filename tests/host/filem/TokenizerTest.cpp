#include "filem/Tokenizer.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using zolhost::filem::BadLine;
using zolhost::filem::tokenize;

namespace
{

using Words = std::vector<std::string>;

std::string whyRefused(const std::string& line)
{
    try
    {
        tokenize(line);
        return "accepted";
    }
    catch (const BadLine& bad)
    {
        return bad.what();
    }
}

} // namespace

TEST(Tokenizer, TakesWordsAsAShellQuotesThem)
{
    struct Case
    {
        std::string line;
        Words words;
    };
    const Case cases[] = {
        {"", {}},
        {" \t ", {}},
        {"ls", {"ls"}},
        {"  ls\t FileGroup=a  ", {"ls", "FileGroup=a"}},
        {"ls\r", {"ls"}},
        {"# comment", {}},
        {"ls # comment 'with a quote", {"ls"}},
        {"a#b '#' \\#", {"a#b", "#", "#"}},
        {"'a b'", {"a b"}},
        {"'a\\2Bb'", {"a\\2Bb"}},
        {"'\"'", {"\""}},
        {"\"a b\"", {"a b"}},
        {R"("a\2Bb")", {"a\\2Bb"}},
        {R"("\"\\\$\`\'")", {R"("\$`\')"}},
        {"\"'\"", {"'"}},
        {"a\\ b", {"a b"}},
        {"a\\\\2Bb", {"a\\2Bb"}},
        {"a\\2Bb", {"a2Bb"}},
        {"\\'", {"'"}},
        {"a'b'\"c\"d", {"abcd"}},
        {"'it'\\''s'", {"it's"}},
        {"'' \"\" x", {"", "", "x"}},
        {"''''", {""}},
        {"$HOME ~ * ; | & > (", {"$HOME", "~", "*", ";", "|", "&", ">", "("}},
        {"\xc3\xa9 \xff", {"\xc3\xa9", "\xff"}},
    };
    for (const auto& [line, words] : cases)
    {
        EXPECT_EQ(tokenize(line), words) << line;
    }
}

TEST(Tokenizer, RefusesALineThatDoesNotEnd)
{
    EXPECT_EQ(whyRefused("ls 'a"), "a single quote has no end");
    EXPECT_EQ(whyRefused("ls \"a"), "a double quote has no end");
    EXPECT_EQ(whyRefused("ls \"a\\\""), "a double quote has no end");
    EXPECT_EQ(whyRefused("ls \"a\\"), "a double quote has no end");
    EXPECT_EQ(whyRefused("ls a\\"), "a backslash at the end of a line quotes nothing");
    EXPECT_EQ(whyRefused(std::string("ls a\0b", 6)), "a line must not hold a zero byte");
}
