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

TEST(Expression, StaysAsItIsIfItIsNotValid)
{
    for (const char* const bad : {"(", "a)|(b", "[", "a|["})
    {
        EXPECT_FALSE(isValidExpression(bad)) << bad;
        EXPECT_EQ(forWholeName(bad), bad);
    }
    EXPECT_TRUE(isValidExpression("a|b"));
}
