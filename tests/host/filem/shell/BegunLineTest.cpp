#include "filem/Tokenizer.h"
#include "filem/output/Quoting.h"

#include <gtest/gtest.h>
#include <string>

using namespace zolhost::filem;

namespace
{

struct Begun
{
    const char* line;
    std::size_t tokens;
    const char* word;
    std::size_t start;
    Quotes quotes;
};

class BegunLineTest : public testing::TestWithParam<Begun>
{};

} // namespace

TEST_P(BegunLineTest, TellsTheWordThatIsBeingTyped)
{
    const auto line = tokenizeBegun(GetParam().line);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->tokens.size(), GetParam().tokens);
    EXPECT_EQ(line->word, GetParam().word);
    EXPECT_EQ(line->start, GetParam().start);
    EXPECT_EQ(line->quotes, GetParam().quotes);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, BegunLineTest,
    testing::Values(Begun{"", 0, "", 0, Quotes::None}, Begun{"  ", 0, "", 2, Quotes::None},
                    Begun{"ls", 0, "ls", 0, Quotes::None}, Begun{"ls ", 1, "", 3, Quotes::None},
                    Begun{"ls a b", 2, "b", 5, Quotes::None}, Begun{"ls|", 2, "", 3, Quotes::None},
                    Begun{"ls;rm", 2, "rm", 3, Quotes::None}, Begun{"ls 'a b", 1, "a b", 3, Quotes::Single},
                    Begun{"ls 'a b'", 1, "a b", 3, Quotes::None},
                    Begun{"ls a' b", 1, "a b", 3, Quotes::Single},
                    Begun{"ls \"a b", 1, "a b", 3, Quotes::Double},
                    Begun{"ls \"a\\\"b", 1, "a\"b", 3, Quotes::Double},
                    Begun{"ls $'a\\nb", 1, "a\nb", 3, Quotes::Dollar},
                    Begun{"ls a\\ b", 1, "a b", 3, Quotes::None}, Begun{"ls '", 1, "", 3, Quotes::Single}));

TEST(BegunLine, HasNoWordInACommentOrBehindABackslash)
{
    EXPECT_FALSE(tokenizeBegun("ls # a"));
    EXPECT_FALSE(tokenizeBegun("ls #"));
    EXPECT_FALSE(tokenizeBegun("ls a\\"));
}

TEST(BegunLine, MustBeRightAsFarAsItGoes)
{
    EXPECT_THROW(tokenizeBegun("ls $'\\q"), BadLine);
}

TEST(Quoting, UsesTheQuotesThatAreAskedFor)
{
    EXPECT_EQ(shellQuoted("a", Quotes::None), "a");
    EXPECT_EQ(shellQuoted("a", Quotes::Single), "'a'");
    EXPECT_EQ(shellQuoted("a\"$`\\", Quotes::Double), "\"a\\\"\\$\\`\\\\\"");
    EXPECT_EQ(shellQuoted("a'", Quotes::Dollar), "$'a\\''");
    EXPECT_EQ(shellQuoted("a\n", Quotes::Double), "$'a\\n'");
}

TEST(Quoting, LeavesQuotesOpenWhereMoreIsToBeTyped)
{
    EXPECT_EQ(shellQuotedOpen("a", Quotes::None), "a");
    EXPECT_EQ(shellQuotedOpen("a b", Quotes::None), "'a b");
    EXPECT_EQ(shellQuotedOpen("it's", Quotes::None), "'it'\\''s");
    EXPECT_EQ(shellQuotedOpen("a", Quotes::Double), "\"a");
    EXPECT_EQ(shellQuotedOpen("a\n", Quotes::None), "$'a\\n");
}
