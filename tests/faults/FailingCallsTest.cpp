#include "Campaign.h"
#include "Scenario.h"

#include <cctype>
#include <gtest/gtest.h>

using faults::Scenario;
using faultshim::Function;

namespace
{

std::string testName(const std::string& text)
{
    std::string name;
    bool isFirst = true;
    for (const char character : text)
    {
        if (std::isalnum(static_cast<unsigned char>(character)) == 0)
        {
            isFirst = true;
            continue;
        }
        name += isFirst ? static_cast<char>(std::toupper(static_cast<unsigned char>(character))) : character;
        isFirst = false;
    }
    return name;
}

std::vector<std::string> scenarioNames()
{
    std::vector<std::string> names;
    for (const Scenario& scenario : faults::allScenarios("/"))
    {
        names.push_back(scenario.name);
    }
    return names;
}

class Failing : public testing::TestWithParam<std::string>
{
protected:
    Failing()
    {
        for (const Scenario& each : faults::allScenarios(surroundings.root()))
        {
            if (each.name == GetParam())
            {
                scenario = each;
            }
        }
        reference = faults::runUndisturbed(surroundings, scenario);
    }

    void failEach(bool allocations)
    {
        ASSERT_EQ(reference.problems, "") << "without a failure";
        for (std::size_t i = 0; i < faultshim::FUNCTIONS; ++i)
        {
            const auto function = static_cast<Function>(i);
            if (faultshim::isAllocator(function) != allocations)
            {
                continue;
            }
            const faults::Tally tally = faults::failEachCall(function, surroundings, scenario, reference);
            EXPECT_TRUE(tally.problems.empty()) << tally.problems;
        }
    }

    faults::Surroundings surroundings;
    Scenario scenario;
    faults::Reference reference;
};

class FailingCalls : public Failing
{};

class FailingAllocations : public Failing
{};

} // namespace

TEST_P(FailingCalls, LeaveWhatTheRulesSay)
{
    failEach(false);
}

TEST_P(FailingAllocations, LeaveWhatTheRulesSay)
{
    failEach(true);
}

INSTANTIATE_TEST_SUITE_P(In, FailingCalls, testing::ValuesIn(scenarioNames()),
                         [](const auto& each) { return testName(each.param); });
INSTANTIATE_TEST_SUITE_P(In, FailingAllocations, testing::ValuesIn(scenarioNames()),
                         [](const auto& each) { return testName(each.param); });
