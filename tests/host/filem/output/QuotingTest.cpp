#include "filem/output/Quoting.h"

#include "filem/Tokenizer.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using namespace zolhost::filem;

TEST(Quoting, GivesWhatAShellReadsBack)
{
    struct Case
    {
        std::string text;
        std::string quoted;
    };
    const Case cases[] = {
        {"plain.log", "plain.log"},
        {"logs/a-b_c@d%e+f=g:h,i", "logs/a-b_c@d%e+f=g:h,i"},
        {"", "''"},
        {"a b", "'a b'"},
        {"~", "'~'"},
        {"a?\?b", "'a?\?b'"},
        {"a\\2Bb", "'a\\2Bb'"},
        {"it's", "'it'\\''s'"},
        {"a;b|c", "'a;b|c'"},
        {"#x", "'#x'"},
        {"\xc3\xa9", "'\xc3\xa9'"},
        {"two\nlines", "$'two\\nlines'"},
        {"tab\t'\\", "$'tab\\t\\'\\\\'"},
        {"\x1b[31m", "$'\\x1b[31m'"},
        {"\xff\xc3\xa9", "$'\\xff\xc3\xa9'"},
        {"\xc2\x9b", "$'\\xc2\\x9b'"},
    };
    for (const auto& [text, quoted] : cases)
    {
        EXPECT_EQ(shellQuoted(text), quoted);
    }
}

TEST(Quoting, IsReadBackByThePromptToo)
{
    for (int first = 1; first < 256; ++first)
    {
        for (const std::string behind : {"", "a", "\n", "'", "0", "\x9b"})
        {
            const std::string text = static_cast<char>(first) + behind;
            const auto tokens = tokenize(shellQuoted(text));
            ASSERT_EQ(tokens.size(), 1U) << hex(text);
            EXPECT_EQ(hex(tokens.front().text), hex(text));
        }
    }
}

TEST(Quoting, LeavesAPrintableTextAlone)
{
    EXPECT_EQ(quotedIfNeeded("FileGroup=a b"), "FileGroup=a b");
    EXPECT_EQ(quotedIfNeeded("FileGroup=a\n"), "$'FileGroup=a\\n'");
}

TEST(Quoting, ShowsPathsBelowTheRoot)
{
    EXPECT_EQ(shownPath("/tree/logs/a b", "/tree"), "'logs/a b'");
    EXPECT_EQ(shownPath("/tree/", "/tree"), "/");
    EXPECT_EQ(shownPath("/tree", "/tree"), "/");
    EXPECT_EQ(shownPath("/logs/", ""), "logs/") << "a tree that begins at the root of the disk";
}

TEST(Quoting, TellsUtf8FromOtherBytes)
{
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("a\xc3\xa9\n"));
    EXPECT_FALSE(isUtf8("a\xc3"));
    EXPECT_EQ(hex(std::string("\0a\xff", 3)), "0061ff");
}
