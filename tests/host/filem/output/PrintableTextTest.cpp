#include "filem/output/PrintableText.h"

#include <gtest/gtest.h>
#include <string>

using zolhost::filem::printable;
using zolhost::filem::width;

TEST(PrintableText, LetsNoControlByteThrough)
{
    struct Case
    {
        std::string text;
        std::string shown;
    };
    const Case cases[] = {
        {"", ""},
        {"plain a\\2Bb ~", "plain a\\2Bb ~"},
        {"two\nlines\t\r", R"(two\x0alines\x09\x0d)"},
        {"\x1b[31mred", "\\x1b[31mred"},
        {"\x7f", "\\x7f"},
        {std::string("a\0b", 3), "a\\x00b"},
        {"\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80", "\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80"},
        {"\xc2\x9b"
         "31m",
         "\\xc2\\x9b31m"},
        {"\xc2\xa0", "\xc2\xa0"},
        {"\xe2\x80\xae\xe2\x80\x8b\xef\xbb\xbf", R"(\xe2\x80\xae\xe2\x80\x8b\xef\xbb\xbf)"},
        {"\x9b", "\\x9b"},
        {"a\xff", "a\\xff"},
        {"\xc3", "\\xc3"},
        {"\xc3(", "\\xc3("},
        {"\xe2\x82", "\\xe2\\x82"},
        {"\xc0\xaf", "\\xc0\\xaf"},
        {"\xe0\x80\xaf", R"(\xe0\x80\xaf)"},
        {"\xed\xa0\x80", R"(\xed\xa0\x80)"},
        {"\xf4\x90\x80\x80", R"(\xf4\x90\x80\x80)"},
        {"\xf8\x88\x80\x80\x80", R"(\xf8\x88\x80\x80\x80)"},
    };
    for (const auto& [text, shown] : cases)
    {
        EXPECT_EQ(printable(text), shown);
    }
}

TEST(PrintableText, IsAsWideAsATerminalShowsIt)
{
    EXPECT_EQ(width(""), 0U);
    EXPECT_EQ(width("abc"), 3U);
    EXPECT_EQ(width("\xc3\xa9\xe2\x82\xac"), 2U);
    EXPECT_EQ(width("\xe6\x97\xa5\xe6\x9c\xac"), 4U) << "wide characters";
    EXPECT_EQ(width("e\xcc\x81"), 1U) << "a combining accent";
}
