#include "AllocatedBytes.h"
#include "OnThreads.h"

#include <gtest/gtest.h>
#include <regex.h>
#include <string>
#include <sys/resource.h>
#include <vector>
#include <zol/common/RegularExpression.h>

namespace
{

using Zol::RegularExpression;
using zoltest::allocatedBytes;

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

std::string repeated(const std::string& text, int times)
{
    std::string result;
    for (int i = 0; i < times; ++i)
    {
        result += text;
    }
    return result;
}

TEST(RegularExpression, ThatWouldTakeTooMuchMemoryOrTimeIsNotValid)
{
    for (const std::string& text : {
             std::string("^(((a{1,255}){1,255}){1,255})$"),
             std::string("^((a?){0,255}){0,16}$"),
             std::string("^((a?){0,31}){0,16}$"),
             std::string("^a{255}{255}$"),
             std::string("^((a|^)*|$)*{50}$"),
             std::string("^((a|^){0,100}|$){2}$"),
             std::string("^.*(.*).*\\1.*x$"),
             std::string("^(a|b)(c|d)\\2$"),
             "^" + repeated("(", 20000) + "a" + repeated(")", 20000) + "$",
             "^" + repeated("a", 33000) + "$",
             "^" + repeated("a?", 2048) + "$",
             "^" + repeated("a|", 1600) + "a$",
         })
    {
        const RegularExpression expression(text, ExtendedWithoutSubMatches);
        EXPECT_FALSE(expression.isExpressionValid()) << text.substr(0, 60);
        EXPECT_FALSE(expression.match("a", 0)) << text.substr(0, 60);
    }
    EXPECT_FALSE(RegularExpression("^\\(\\(a\\{1,255\\}\\)\\{1,255\\}\\)$", 0).isExpressionValid())
        << "basic, where a repetition has backslashes";
}

TEST(RegularExpression, ThatAnOperatorMayNeedIsValid)
{
    for (const std::string& text : {
             std::string("^[a-z]{1,64}[0-9_.-]{0,64}\\.(log(\\.[0-9]{1,3})?|t[]x[:blank:]{1000}]t)$"),
             "^" + repeated("statistics-2026-01-01-00-00.xml|", 500) + "x$",
             "^" + repeated("(", 200) + "a" + repeated(")", 200) + "$",
             "^" + repeated("[{1000}(]\\{1000}\\(", 200) + "$",
             std::string("^.{255}$"),
             std::string("^(.{1,30}-){8}$"),
             std::string("(^|-)(a+|b*)+($|-)"),
         })
    {
        EXPECT_TRUE(RegularExpression(text, ExtendedWithoutSubMatches).isExpressionValid())
            << text.substr(0, 60);
    }
    EXPECT_TRUE(RegularExpression("^(.*)-\\1$", ExtendedWithoutSubMatches).match("ab-ab", 0));
    EXPECT_FALSE(RegularExpression("^(.*)-\\1$", ExtendedWithoutSubMatches).match("ab-ac", 0));
    EXPECT_TRUE(
        RegularExpression("^(((a{1,255}){1,255}){1,255})$", 0).match("(((a{1,255}){1,255}){1,255})", 0))
        << "basic, where these are characters";
}

TEST(RegularExpression, EndsAtAZeroByte)
{
    const std::string unaffordable = "(((a{1,255}){1,255}){1,255})";
    const RegularExpression expression("^a$" + std::string(1, '\0') + unaffordable,
                                       ExtendedWithoutSubMatches);
    EXPECT_TRUE(expression.match("a", 0));
    EXPECT_FALSE(RegularExpression("^a\x01" + unaffordable, ExtendedWithoutSubMatches).isExpressionValid());
}

TEST(RegularExpression, KeepsLittleOfManyTexts)
{
    const RegularExpression expression("^(a|b)*a(a|b){20}x$", ExtendedWithoutSubMatches);
    EXPECT_FALSE(expression.match(std::string(5000, 'x'), 0));
    const std::size_t before = allocatedBytes();
    unsigned int random = 1;
    for (int i = 0; i < 500; ++i)
    {
        std::string text;
        for (int j = 0; j < 250; ++j)
        {
            random = random * 1103515245U + 12345U;
            text += (random >> 16U) % 2 == 0 ? 'a' : 'b';
        }
        EXPECT_FALSE(expression.match(text, 0));
    }
    EXPECT_LT(allocatedBytes(), before + 32'000'000U);
    EXPECT_TRUE(expression.match(repeated("a", 21) + "x", 0));
}

TEST(RegularExpression, OfMillionsOfGroupsTakesNoMoreMemoryThanItsText)
{
    const auto mostMemory = [] {
        rusage usage = {};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    };
    const std::string groups = repeated("(", 4'000'000);
    const auto before = mostMemory();
    EXPECT_FALSE(RegularExpression(groups, ExtendedWithoutSubMatches).isExpressionValid());
    EXPECT_LT(mostMemory(), before + 64 * 1024);
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
