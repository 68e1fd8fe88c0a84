#include "FileMTransaction.h"

#include <gtest/gtest.h>
#include <string>
#include <type_traits>

using PathCompare = ZolFileManagement::FileMTransaction::PathCompare;

namespace
{

static_assert(std::is_empty_v<PathCompare>);

struct Pair
{
    const char* name;
    const char* lower;
    const char* higher;
};

class PathOrder : public testing::TestWithParam<Pair>
{};

constexpr Pair pairs[] = {
    {"HyphenBeforeSlash", "/fs/a-b/", "/fs/a/"},        {"DotBeforeSlash", "/fs/a.b/", "/fs/a/"},
    {"CommaBeforeSlash", "/fs/a,b/", "/fs/a/"},         {"HyphenBeforeWhatLiesBelow", "/fs/a-b/", "/fs/a/x/"},
    {"SlashBeforeDigit", "/fs/a/", "/fs/a0/"},          {"SlashBeforeLetter", "/fs/a/z/", "/fs/ab/"},
    {"ParentBeforeChild", "/fs/a/", "/fs/a/b/"},        {"ParentBeforeItsFile", "/fs/a/", "/fs/a/b"},
    {"FileFormBeforeDirectoryForm", "/fs/a", "/fs/a/"}, {"ShorterBeforeLonger", "/fs/a", "/fs/ab"},
    {"CapitalBeforeSmallLetter", "/fs/Z/", "/fs/a/"},   {"BytesAreUnsigned", "/fs/\x7f/", "/fs/\x80/"},
    {"HighByteBehindSlash", "/fs/a/", "/fs/a\xff/"},
};

} // namespace

TEST_P(PathOrder, IsThatOfTheWholeTexts)
{
    const Poco::Path lower(GetParam().lower);
    const Poco::Path higher(GetParam().higher);
    EXPECT_TRUE(PathCompare()(lower, higher));
    EXPECT_FALSE(PathCompare()(higher, lower));
}

INSTANTIATE_TEST_SUITE_P(Texts, PathOrder, testing::ValuesIn(pairs),
                         [](const auto& test) { return std::string(test.param.name); });

TEST(PathCompare, NeitherOfTwoPathsWithOneTextComesFirst)
{
    EXPECT_FALSE(PathCompare()(Poco::Path("/fs/a/"), Poco::Path("/fs/a/")));
    EXPECT_FALSE(PathCompare()(Poco::Path("/fs/a/"), Poco::Path("/fs/a").makeDirectory()));
}
