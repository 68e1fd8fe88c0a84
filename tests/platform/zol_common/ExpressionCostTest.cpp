#include "ExpressionCost.h"

#include <gtest/gtest.h>
#include <regex.h>
#include <string>
#include <vector>

namespace
{

using Zol::ExpressionCost;

struct Row
{
    std::string expression;
    std::size_t places;
};

void expectPlaces(const std::vector<Row>& rows, int flags = REG_EXTENDED)
{
    for (const auto& [expression, places] : rows)
    {
        EXPECT_EQ(ExpressionCost(expression, flags).places(), places) << expression;
    }
}

bool isAffordable(const std::string& expression)
{
    return ExpressionCost(expression, REG_EXTENDED).isAffordable();
}

std::string repeated(const std::string& text, std::size_t times)
{
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
    {
        result += text;
    }
    return result;
}

TEST(ExpressionCost, OfACharacterAnAssertionAReferenceOrAGroupIsOne)
{
    expectPlaces({
        {"", 0},
        {"a", 1},
        {"ab", 2},
        {".", 1},
        {"\\.", 1},
        {R"(\*\+\{\()", 4},
        {"a\\", 2},
        {"^a$", 3},
        {"a\\b", 2},
        {"\\1", 1},
        {"()", 1},
        {"(a)", 2},
        {"((a)b)c", 5},
        {"(a", 2},
        {"((a", 3},
        {"a)b", 2},
        {"(a))b", 3},
    });
}

TEST(ExpressionCost, OfAnAlternativeIsFourWithItsCharacter)
{
    expectPlaces({
        {"a|b", 5},
        {"a|b|c", 9},
        {"|", 3},
        {"(a|b)", 6},
        {"(a|bc)d", 8},
        {"(a|b", 6},
    });
}

TEST(ExpressionCost, OfABracketExpressionIsOneWhateverIsInIt)
{
    expectPlaces({
        {"[abc]d", 2},
        {"[^abc]d", 2},
        {"[]abc]d", 2},
        {"[^]abc]d", 2},
        {"[a^]d", 2},
        {"[\\]d", 2},
        {"[(|*{3}]d", 2},
        {"[[:alpha:]]d", 2},
        {"[[:alpha:]x]d", 2},
        {"[x[:alpha:]]d", 2},
        {"[[.].]]d", 2},
        {"[[=]=]]d", 2},
        {"[[:]:]]d", 2},
        {"[[;];]]d", 5},
        {"[[a]d", 2},
        {"[", 1},
        {"[a", 1},
        {"[]a", 1},
        {"[[", 1},
        {"[[:", 1},
        {"[[:a]b", 1},
    });
}

TEST(ExpressionCost, OfARepetitionIsThatOfItsCopiesAndSevenForEachThatCanBeLeftOut)
{
    expectPlaces({
        {"a*", 8},         {"a+", 8},        {"a?", 8},       {"a{1}", 1},     {"a{3}", 3},
        {"a{12}b", 13},    {"a{0}", 8},      {"a{2,}", 9},    {"a{0,}", 8},    {"a{2,5}b", 27},
        {"a{,3}", 24},     {"a{1,1}", 1},    {"a{3", 3},      {"a{3,", 10},    {"a{", 8},
        {"ab{3}", 4},      {"a|b{3}", 7},    {"b{3}|a", 7},   {"a|*", 11},     {"(ab){3}", 9},
        {"(a|bc){2}", 14}, {"(a{2}){3}", 9}, {"(a*){3}", 27}, {"(^*){3}", 27}, {"(\\1*){3}", 27},
        {"(^){3}", 6},
    });
}

TEST(ExpressionCost, OfARepetitionIsFourfoldWhereItsContentCanBeEmptyAndHoldsRepetitions)
{
    expectPlaces({
        {"(a{0,2}){3}", 204},
        {"((a{0,2}){3}){2}", 1640},
        {"(^{2}){3}", 36},
        {"(\\1{2}){3}", 36},
        {"(a{2}|){3}", 72},
        {"(|a{2}){3}", 72},
        {"(|a{2}|b){3}", 120},
        {"(a{2}|b){3}", 21},
        {"(b*(a{2})*){3}", 228},
        {"((a{2})*b*){3}", 228},
        {"(b*a{2}){3}", 33},
        {"(a{2}b*){3}", 33},
        {"((a{2}){0,3}){2}", 248},
        {"((a{2})*){2}", 88},
        {"((a{2})?){2}", 88},
        {"((a{2})+){2}", 22},
        {"((a{2})*)?", 18},
    });
}

TEST(ExpressionCost, IsCountedToAMillionPlacesAndNoFurther)
{
    expectPlaces({
        {"a{1048575}", 1048575},
        {"a{1048577}", 1048576},
        {"a{18446744073709551617}", 1048576},
        {"((((a{999999}){999999}){999999}){999999}){999999}", 1048576},
        {repeated("(a{0,2}", 40) + repeated("){255}", 40), 1048576},
    });
}

TEST(ExpressionCost, OfTheBasicLanguageCountsOperatorsWithABackslash)
{
    expectPlaces(
        {
            {"a+b?(c|d)", 9},
            {"a{3}", 4},
            {"a*", 8},
            {"a\\+", 8},
            {"a\\?", 8},
            {R"(\(a\|b\))", 6},
            {"a\\{3\\}b", 4},
            {"a\\{1,3\\}b", 18},
            {"a\\.", 2},
            {"^[*\\]$", 3},
        },
        0);
}

TEST(ExpressionCost, IsAffordableUpTo8192Places)
{
    EXPECT_TRUE(isAffordable(std::string(8192, 'a')));
    EXPECT_FALSE(isAffordable(std::string(8193, 'a')));
}

TEST(ExpressionCost, IsAffordableUpTo250GroupsInEachOther)
{
    EXPECT_TRUE(isAffordable(repeated("(", 250) + repeated(")", 250)));
    EXPECT_FALSE(isAffordable(repeated("(", 251) + repeated(")", 251)));
    EXPECT_FALSE(isAffordable(repeated("(", 251) + repeated(")", 251) + "(a)"));
    EXPECT_FALSE(isAffordable(repeated("(", 251)));
    EXPECT_TRUE(isAffordable(repeated("(a)", 300)));
    EXPECT_TRUE(isAffordable(repeated("\\(", 300)));
}

TEST(ExpressionCost, IsAffordableUpToFourRepeatedAssertions)
{
    for (const std::string assertion : {"^", "$", "\\b", "\\B", "\\<", "\\>", "\\`", "\\'"})
    {
        EXPECT_TRUE(isAffordable("(" + assertion + "){4}")) << assertion;
        EXPECT_FALSE(isAffordable("(" + assertion + "){5}")) << assertion;
    }
    for (const std::string expression : {"^^^^^", "(^^^^^)?", "(^^^^^){1}", "(^^^^^){0,1}", "(^^^^)*",
                                         "(^^^^)*(^^^^)*", "(^^){2}", "(\\w){5}"})
    {
        EXPECT_TRUE(isAffordable(expression)) << expression;
    }
    for (const std::string expression : {"(^^^^^)*", "(^^^^^)+", "(^^^){2}", "(^a^a^){2}", "(^|^|^){2}",
                                         "(^^^^^)*(^)*", "((^)?){5}", "(^){2,}{3}"})
    {
        EXPECT_FALSE(isAffordable(expression)) << expression;
    }
}

TEST(ExpressionCost, WithAReferenceIsAffordableUpToOneRepetitionOrAlternativeThatIsOpen)
{
    for (const std::string expression :
         {"(a)\\1", "(a*)\\1", "(a|b)\\1", "(a)\\1b{2}c{3}d*", "(a*)b*|c", "(a)\\1b{2,3}", "(a)\\9b+"})
    {
        EXPECT_TRUE(isAffordable(expression)) << expression;
    }
    for (const std::string expression : {"(a*)\\1b*", "(a|b|c)\\1", "(a|b)\\1c?", "(a)\\1b{0,2}c{1,2}",
                                         "(a)\\1b{2,}c+", "(a*)b*\\9", "(a)\\1b{0}c*"})
    {
        EXPECT_FALSE(isAffordable(expression)) << expression;
    }
}

TEST(ExpressionCost, LetsFewerBytesBeMatchedTheMorePlacesThereAre)
{
    struct Limit
    {
        std::size_t places;
        std::size_t bytes;
    };
    for (const auto& [places, bytes] :
         std::vector<Limit>{{0, 4096}, {1, 4096}, {512, 4096}, {513, 4088}, {1024, 2048}, {8192, 256}})
    {
        EXPECT_EQ(ExpressionCost(std::string(places, 'a'), REG_EXTENDED).bytesToKeep(), bytes) << places;
    }
}

} // namespace
