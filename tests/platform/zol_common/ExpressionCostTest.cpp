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
    std::size_t cost;
};

void expectCosts(const std::vector<Row>& rows, int flags = REG_EXTENDED)
{
    for (const auto& [expression, cost] : rows)
    {
        EXPECT_EQ(ExpressionCost(expression, flags).value(), cost) << expression;
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

TEST(ExpressionCost, OfACharacterThatStandsForItselfIsOne)
{
    expectCosts({
        {"", 0},
        {"a", 1},
        {"ab", 2},
        {"\\.", 1},
        {R"(\*\+\{\()", 4},
        {"a\\", 2},
    });
}

TEST(ExpressionCost, OfAClassAnAssertionAReferenceOrAGroupIsFour)
{
    expectCosts({
        {".", 4},
        {"a.b", 6},
        {R"(\w\W\s\S)", 16},
        {"^a$", 9},
        {"a\\b", 5},
        {"\\1", 4},
        {"(a)", 5},
        {"((a)b)c", 11},
        {"(a", 5},
        {"((a", 9},
        {"a)b", 2},
        {"(a))b", 6},
    });
}

TEST(ExpressionCost, OfAnEmptyGroupIs64)
{
    expectCosts({
        {"()", 64},
        {"(())", 68},
        {"(|)", 24},
        {"a()b", 66},
    });
}

TEST(ExpressionCost, OfAnAlternativeIsTwenty)
{
    expectCosts({
        {"a|b", 22},
        {"a|b|c", 43},
        {"|", 20},
        {"(a|b)", 26},
        {"(a|bc)d", 28},
        {"(a|b", 26},
    });
}

TEST(ExpressionCost, OfABracketExpressionIsThatOfAClassWhateverIsInIt)
{
    expectCosts({
        {"[abc]d", 5},
        {"[^abc]d", 5},
        {"[]abc]d", 5},
        {"[^]abc]d", 5},
        {"[a^]d", 5},
        {"[\\]d", 5},
        {"[(|*{3}]d", 5},
        {"[[:alpha:]]d", 5},
        {"[[:alpha:]x]d", 5},
        {"[x[:alpha:]]d", 5},
        {"[[.].]]d", 5},
        {"[[=]=]]d", 5},
        {"[[:]:]]d", 5},
        {"[[;];]]d", 8},
        {"[[a]d", 5},
        {"[", 4},
        {"[a", 4},
        {"[]a", 4},
        {"[[", 4},
        {"[[:", 4},
        {"[[:a]b", 4},
    });
}

TEST(ExpressionCost, OfARepetitionIsThatOfItsCopiesAnd28ForEachThatCanBeLeftOut)
{
    expectCosts({
        {"a*", 29},        {"a+", 30},        {"a?", 29},      {"a{1}", 1},      {"a{3}", 3},
        {"a{12}b", 13},    {"a{0}", 29},      {"a{2,}", 31},   {"a{0,}", 29},    {"a{2,5}b", 90},
        {"a{,3}", 87},     {"a{1,1}", 1},     {"a{3", 3},      {"a{3,", 32},     {"a{", 29},
        {"ab{3}", 4},      {"a|b{3}", 24},    {"b{3}|a", 24},  {"a|*", 49},      {"(ab){3}", 18},
        {"(a|bc){2}", 54}, {"(a{2}){3}", 18}, {"(a*){3}", 99}, {"(^*){3}", 108}, {"(\\1*){3}", 108},
        {"(^){3}", 24},
    });
}

TEST(ExpressionCost, OfARepetitionIsFourfoldWhereItsContentCanBeEmptyAndHoldsRepetitions)
{
    expectCosts({
        {"(a{0,2}){3}", 744},
        {"((a{0,2}){3}){2}", 5984},
        {"(^{2}){3}", 144},
        {"(\\1{2}){3}", 144},
        {"(a{2}|){3}", 312},
        {"(|a{2}){3}", 312},
        {"(|a{2}|b){3}", 564},
        {"(a{2}|b){3}", 81},
        {"(b*(a{2})*){3}", 804},
        {"((a{2})*b*){3}", 804},
        {"(b*a{2}){3}", 105},
        {"(a{2}b*){3}", 105},
        {"((a{2}){0,3}){2}", 848},
        {"((a{2})*){2}", 304},
        {"((a{2})?){2}", 304},
        {"((a{2})+){2}", 88},
        {"((a{2})*)?", 66},
        {"a++", 88},
    });
}

TEST(ExpressionCost, IsCountedToAMillionAndNoFurther)
{
    expectCosts({
        {"a{1048575}", 1048575},
        {"a{1048577}", 1048576},
        {"a{18446744073709551617}", 1048576},
    });
    EXPECT_FALSE(isAffordable("((((a{999999}){999999}){999999}){999999}){999999}"));
    EXPECT_FALSE(isAffordable(repeated("(a{0,2}", 40) + repeated("){255}", 40)));
}

TEST(ExpressionCost, IsNotCountedFurtherOnceItIsTooMuch)
{
    EXPECT_EQ(ExpressionCost(repeated("a{32000}", 3), REG_EXTENDED).value(), 64000U);
    EXPECT_EQ(ExpressionCost(repeated("a{32000}|", 3), REG_EXTENDED).value(), 64020U);
    EXPECT_FALSE(isAffordable(repeated("(", 200) + repeated("a{30000})", 200)));
}

TEST(ExpressionCost, OfStepsThatTakeNoCharacterIsThatFromEachPlaceIfTheyLeadInACircle)
{
    for (const auto& [expression, steps] : std::vector<Row>{
             {"a", 0},
             {"a?b?", 0},
             {"(a?b?)?", 0},
             {"(a?b?){2,9}", 0},
             {"(a?b?c)*", 0},
             {"(a)+", 0},
             {"(^){3}", 0},
             {"(a|b?c)*", 0},
             {"(a?(b)c?)*", 0},
             {"(a?)*", 22},
             {"(a*)+", 38},
             {"(|a)*", 12},
             {"(\\1)*", 16},
             {"(^)*", 16},
             {"(a*)*|b", 23},
             {"(a?){2,}", 60},
             {"(a?b?)*", 42},
             {"((a?)?)*", 63},
             {"((a?){0,2})*", 200},
             {"((a?){2})*", 80},
             {"((a?){1,3})*", 350},
             {"((a*)*)*", 59},
             {"(a?)*(b?)*", 55},
         })
    {
        EXPECT_EQ(ExpressionCost(expression, REG_EXTENDED).emptySteps(), steps) << expression;
    }
}

TEST(ExpressionCost, IsAffordableUpTo4096StepsThatTakeNoCharacter)
{
    for (const std::string expression :
         {"([a-z]*[0-9]*-?)*", "(a+|b*)+", "((a?b?)?(c?d?)?)*", "((a?b?c?)?(d?e?f?)?(g?h?i?)?)*"})
    {
        EXPECT_TRUE(isAffordable(expression)) << expression;
    }
    for (const std::string& expression :
         {"(" + repeated("(a?b?c?)?", 4) + ")*", "(" + repeated("(a?b?)?", 25) + ")*",
          std::string("^(((((a?aa){0,}a+a*)*(aa)*(aa*(b[ab]?){3,}b?)*(([ab]*a*)?)*){1,14})?)$"),
          std::string("^(((((a{1,3}a{0,2}aaa{1,}))*((a?a*b?)+)){0,22}(((a*[ab]+[ab]))((a{1,})*(ab{0,0}a?[ab]*"
                      ")?))*))$")})
    {
        EXPECT_FALSE(isAffordable(expression)) << expression;
    }
}

TEST(ExpressionCost, IsAffordableUpTo256StepsThatTakeNoCharacterWithARepeatedAssertion)
{
    EXPECT_TRUE(isAffordable("((a?b?c?)?d?)*(\\b)*"));
    EXPECT_FALSE(isAffordable("((a?b?c?)?(d?e?)?)*(\\b)*"));
    EXPECT_TRUE(isAffordable("((a?b?c?)?(d?e?)?)*\\b")) << "which isn't repeated";
}

TEST(ExpressionCost, OfTheBasicLanguageCountsOperatorsWithABackslash)
{
    expectCosts(
        {
            {"a+b?(c|d)", 9},
            {"a{3}", 4},
            {"a*", 29},
            {"a\\+", 30},
            {"a\\?", 29},
            {R"(\(a\|b\))", 26},
            {"a\\{3\\}b", 4},
            {"a\\{1,3\\}b", 60},
            {"a\\.", 2},
            {"^[*\\]$", 12},
        },
        0);
}

TEST(ExpressionCost, IsAffordableUpTo32768)
{
    EXPECT_TRUE(isAffordable(std::string(32768, 'a')));
    EXPECT_FALSE(isAffordable(std::string(32769, 'a')));
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

TEST(ExpressionCost, IsAffordableUpTo32PlacesWhereWaysThatTakeNoCharacterMeet)
{
    for (const std::string way : {"(a?b?)?", "(a?|b?)", "(^|b?)", "(a*)?"})
    {
        const std::string rest = way == "(^|b?)" ? "(a?)?" : way;
        EXPECT_TRUE(isAffordable("^" + way + repeated(rest, 31) + "$")) << way;
        EXPECT_FALSE(isAffordable("^" + way + repeated(rest, 32) + "$")) << way;
    }
    EXPECT_TRUE(isAffordable("(a?){2,34}"));
    EXPECT_FALSE(isAffordable("(a?){2,35}"));
    EXPECT_TRUE(isAffordable("(a?|b|){16}(a?|b?|){8}"));
    EXPECT_FALSE(isAffordable("(a?|b|){17}(a?|b?|){8}"));
    EXPECT_TRUE(isAffordable("(ab?)?(a|b){100}" + repeated("(ab?)?", 100) + repeated("(a?b?)", 100)))
        << "one way each";
}

TEST(ExpressionCost, IsAffordableUpToEightAssertions)
{
    for (const std::string assertion : {"^", "$", "\\b", "\\B", "\\<", "\\>", "\\`", "\\'"})
    {
        EXPECT_TRUE(isAffordable(repeated("a" + assertion, 8))) << assertion;
        EXPECT_FALSE(isAffordable(repeated("a" + assertion, 9))) << assertion;
    }
    EXPECT_TRUE(isAffordable("(^){4}(^){4}"));
    EXPECT_FALSE(isAffordable("(^){4}(^){4}^"));
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

TEST(ExpressionCost, LetsFewerBytesBeMatchedTheMoreThereIs)
{
    struct Limit
    {
        std::size_t cost;
        std::size_t bytes;
    };
    for (const auto& [cost, bytes] :
         std::vector<Limit>{{0, 4096}, {1, 4096}, {2048, 4096}, {2049, 4094}, {4096, 2048}, {32768, 256}})
    {
        EXPECT_EQ(ExpressionCost(std::string(cost, 'a'), REG_EXTENDED).bytesToKeep(), bytes) << cost;
    }
}

} // namespace
