#include "staging/Expression.h"

#include <gtest/gtest.h>

using namespace zolhost;

TEST(Expression, MeansTheWholeNameAlsoWithAlternatives)
{
    EXPECT_EQ(forWholeName(".*\\.log"), ".*\\.log");
    EXPECT_EQ(forWholeName("a|b"), "(a|b)");
    EXPECT_EQ(anchored("a|b"), "^(a|b)$");
    EXPECT_EQ(anchored("(a)\\1"), "^(a)\\1$") << "a reference back counts the same";
}

TEST(Expression, IsRefusedWhereItCanNotMeanTheWholeName)
{
    for (const char* const good : {"a", "a|b", "(a)\\1", "[|\\]", "a\\\\", "[]|)]", "[^]|)]", "a)", "\\|\\1"})
    {
        EXPECT_EQ(whyNotForWholeName(good), "") << good;
    }
    EXPECT_EQ(whyNotForWholeName("x\\"),
              "the expression ends in a backslash, which would quote the end of the name");
    EXPECT_EQ(whyNotForWholeName("(a|b)(c)\\2"), "an expression with alternatives can't refer back");
    EXPECT_EQ(whyNotForWholeName("a|b)"), "a parenthesis in the expression has no beginning");
}

TEST(Expression, StaysAsItIsIfItIsNotValid)
{
    for (const char* const bad : {"(", "a)|(b", "[", "a|["})
    {
        EXPECT_FALSE(isValidExpression(bad)) << bad;
        EXPECT_EQ(forWholeName(bad), bad);
    }
    EXPECT_TRUE(isValidExpression("a|b"));
}
