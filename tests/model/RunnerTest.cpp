#include "model/Runner.h"
#include "model/Shrinker.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using zolmodel::Finding;
using zolmodel::Mistake;
using zolmodel::Runner;
using zolmodel::Settings;
using zolmodel::shrunk;

namespace
{

std::optional<Finding> findingOf(Mistake mistake)
{
    Settings settings;
    settings.operations = 20000;
    settings.mistake = mistake;
    return Runner(settings).run().finding;
}

std::string textOf(const Finding& finding)
{
    std::string text;
    for (const auto& operation : finding.operations)
    {
        text += toText(operation) + "\n";
    }
    return text + finding.difference;
}

} // namespace

TEST(Shrinking, KeepsOnlyWhatTheFailureNeeds)
{
    std::vector<int> list(300);
    for (int i = 0; i < 300; ++i)
    {
        list[static_cast<std::size_t>(i)] = i;
    }
    const auto has = [](const std::vector<int>& part, int value) {
        return std::find(part.begin(), part.end(), value) != part.end();
    };
    const auto found = shrunk(list, [&](const auto& part) { return has(part, 17) && has(part, 255); });
    EXPECT_EQ(found, (std::vector<int>{17, 255}));
}

TEST(Shrinking, EndsWithNothingWhereNothingIsNeeded)
{
    EXPECT_TRUE(shrunk(std::vector<int>{1, 2, 3}, [](const auto&) { return true; }).empty());
    EXPECT_TRUE(shrunk(std::vector<int>{}, [](const auto&) { return true; }).empty());
}

TEST(ModelThatIsWrong, IsFoundByAModeAndShrunk)
{
    const auto finding = findingOf(Mistake::IgnoresSetGroupId);
    ASSERT_TRUE(finding.has_value());
    EXPECT_LE(finding->operations.size(), 5U) << textOf(*finding);
    EXPECT_NE(finding->difference.find("mode 2770, expected directory mode 770"), std::string::npos)
        << textOf(*finding);
}

TEST(ModelThatIsWrong, IsFoundByANameAndShrunk)
{
    const auto finding = findingOf(Mistake::DecodesOneEscapeOnly);
    ASSERT_TRUE(finding.has_value());
    EXPECT_LE(finding->operations.size(), 6U) << textOf(*finding);
    EXPECT_NE(textOf(*finding).find("2b"), std::string::npos) << textOf(*finding);
}

TEST(ProcessThatEnds, IsAFindingLikeAnyOther)
{
    const auto finding = findingOf(Mistake::KillsItself);
    ASSERT_TRUE(finding.has_value());
#ifdef __clang__ // draws the arguments of a call in another order, and meets a longer way first
    constexpr std::size_t most = 5;
#else
    constexpr std::size_t most = 4;
#endif
    EXPECT_LE(finding->operations.size(), most) << textOf(*finding);
    EXPECT_EQ(finding->difference, "the process ended by: Killed") << textOf(*finding);
}
