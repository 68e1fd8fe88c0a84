#include "OnThreads.h"

#include <gtest/gtest.h>
#include <regex.h>
#include <string>
#include <vector>
#include <zol/common/RegularExpression.h>

namespace
{

using Zol::RegularExpression;

constexpr int ExtendedWithoutSubMatches = 9;

TEST(RegularExpression, MatchesAsTheExtendedLanguageSays)
{
    struct Row
    {
        std::string expression;
        std::string text;
        bool matches;
    };
    for (const auto& [text, name, matches] : std::vector<Row>{
             {"^a.txt$", "a.txt", true},
             {"^a.txt$", "abtxt", true},
             {"^a\\.txt$", "abtxt", false},
             {"^a.txt$", "ba.txt", false},
             {"^a.txt$", "a.txtb", false},
             {"a.txt", "ba.txtb", true},
             {"^(a|b)+$", "abba", true},
             {"^(a|b)+$", "abc", false},
             {"^a{2,3}$", "aa", true},
             {"^a{2,3}$", "aaaa", false},
             {"^[[:digit:]]+$", "123", true},
             {"^[^.]*$", "a.b", false},
             {"^.*$", "", true},
             {"^$", "", true},
             {"^$", "a", false},
             {"^A$", "a", false},
             {"^a$", "a\n", false},
             {"^a.b$", "a\nb", true},
             {"^\\$$", "$", true},
         })
    {
        const RegularExpression expression(text, ExtendedWithoutSubMatches);
        ASSERT_TRUE(expression.isExpressionValid()) << text;
        EXPECT_EQ(expression.match(name, 0), matches) << text << " on " << name;
    }
}

TEST(RegularExpression, ThatDoesNotCompileIsNotValidAndMatchesNothing)
{
    for (const std::string text : {"^($", "^[a$", "^a{2,1}$", "^*[$", "^[[:none:]]$", "a\\"})
    {
        const RegularExpression expression(text, ExtendedWithoutSubMatches);
        EXPECT_FALSE(expression.isExpressionValid()) << text;
        EXPECT_FALSE(expression.match(text, 0)) << text;
        EXPECT_FALSE(expression.match("", 0)) << text;
    }
}

TEST(RegularExpression, TakesTheFlagsOfTheSystem)
{
    EXPECT_TRUE(RegularExpression("^A+$", REG_EXTENDED | REG_ICASE).match("aa", 0));
    EXPECT_TRUE(RegularExpression("^a+$", 0).match("a+", 0)) << "basic, where a plus sign is a character";
    EXPECT_FALSE(RegularExpression("^a", REG_EXTENDED).match("a", REG_NOTBOL));
    EXPECT_FALSE(RegularExpression("a$", REG_EXTENDED).match("a", REG_NOTEOL));
}

TEST(RegularExpression, MatchesOnSeveralThreadsAtOnce)
{
    const RegularExpression expression("^(a|b)*c{3}$", ExtendedWithoutSubMatches);
    std::vector<int> matches(4);
    zoltest::onThreads(4, [&expression, &matches](int thread) {
        for (int i = 0; i < 500; ++i)
        {
            matches[static_cast<std::size_t>(thread)] +=
                expression.match("abbaccc", 0) && !expression.match("abbacc", 0) ? 1 : 0;
        }
    });
    EXPECT_EQ(matches, std::vector<int>(4, 500));
}

} // namespace
