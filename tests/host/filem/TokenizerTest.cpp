#include "filem/Tokenizer.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using zolhost::filem::BadLine;
using zolhost::filem::Token;
using zolhost::filem::tokenize;

namespace
{

using Words = std::vector<std::string>;

Words wordsOf(const std::string& line)
{
    Words words;
    for (const auto& [kind, text] : tokenize(line))
    {
        words.push_back(kind == Token::Kind::Word ? text : kind == Token::Kind::Pipe ? "<|>" : "<;>");
    }
    return words;
}

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
        {"$HOME $ ~ * & > (", {"$HOME", "$", "~", "*", "&", ">", "("}},
        {"ls a;rm b|match c ; | #", {"ls", "a", "<;>", "rm", "b", "<|>", "match", "c", "<;>", "<|>"}},
        {"';' \"|\" \\;", {";", "|", ";"}},
        {R"($'a\nb' x$'\x41\'\\\t\r\"'y)", {"a\nb", "xA'\\\t\r\"y"}},
        {R"($'\xff\xc3\xa9')", {"\xff\xc3\xa9"}},
        {"\xc3\xa9 \xff", {"\xc3\xa9", "\xff"}},
    };
    for (const auto& [line, words] : cases)
    {
        EXPECT_EQ(wordsOf(line), words) << line;
    }
}

TEST(Tokenizer, RefusesALineThatDoesNotEnd)
{
    EXPECT_EQ(whyRefused("ls 'a"), "a single quote has no end");
    EXPECT_EQ(whyRefused("ls \"a"), "a double quote has no end");
    EXPECT_EQ(whyRefused("ls \"a\\\""), "a double quote has no end");
    EXPECT_EQ(whyRefused("ls \"a\\"), "a double quote has no end");
    EXPECT_EQ(whyRefused("ls a\\"), "a backslash at the end of a line quotes nothing");
    EXPECT_EQ(whyRefused("ls $'a"), "a single quote has no end");
    EXPECT_EQ(whyRefused("ls $'a\\"), "a backslash at the end of a line quotes nothing");
    EXPECT_EQ(whyRefused("ls $'\\q'"), "there is no \\q in $'\xe2\x80\xa6'");
    for (const std::string bad : {"\\x", "\\x4", "\\xg0", "\\x00"})
    {
        EXPECT_EQ(whyRefused("ls $'" + bad + "'"), "\\x takes two hexadecimal digits, not both 0") << bad;
    }
    EXPECT_EQ(whyRefused(std::string("ls a\0b", 6)), "a line must not hold a zero byte");
}
