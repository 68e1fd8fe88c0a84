#include "Campaign.h"

#include "Errors.h"

#include <cstdio>
#include <cstring>
#include <map>

namespace faults
{

using faultshim::Function;

bool killAtEveryCall = false;

Tally& Tally::operator+=(const Tally& other)
{
    calls += other.calls;
    cases += other.cases;
    unseen += other.unseen;
    stated += other.stated;
    died += other.died;
    problems += other.problems;
    return *this;
}

Tally failEachCall(Function function, Surroundings& surroundings, const Scenario& scenario,
                   const Reference& reference)
{
    constexpr unsigned long MOST_TO_REPORT = 3; // one that hangs takes its time
    unsigned long wrong = 0;
    Tally tally;
    tally.calls = reference.calls[static_cast<std::size_t>(function)];
    for (unsigned long number = 1; number <= tally.calls && wrong < MOST_TO_REPORT; ++number)
    {
        for (const int error : errorsOf(function))
        {
            const CaseResult result = runWith({function, number, error}, surroundings, scenario, reference);
            ++tally.cases;
            tally.unseen += result.effect == Effect::None ? 1 : 0;
            tally.stated += result.effect == Effect::Stated ? 1 : 0;
            tally.died += result.effect == Effect::Died ? 1 : 0;
            if (result.effect == Effect::Wrong)
            {
                ++wrong;
                tally.problems += std::string(faultshim::nameOf(function)) + " " + std::to_string(number) +
                                  ", " + std::strerror(error) + "\n" + result.problems;
            }
        }
    }
    return tally;
}

namespace
{

void printRow(const std::string& name, const Tally& tally)
{
    std::printf("| %s | %lu | %lu | %lu | %lu | %lu |\n", name.c_str(), tally.calls, tally.cases,
                tally.unseen, tally.stated, tally.died);
}

void printHead(const char* what)
{
    std::printf("| %s | Calls | Cases | Unseen | As stated | Process ended |\n|---|--:|--:|--:|--:|--:|\n",
                what);
}

} // namespace

int printTable()
{
    Surroundings surroundings;
    std::map<Function, Tally> byFunction;
    Tally all;
    printHead("Operation");
    for (const Scenario& scenario : allScenarios(surroundings.root()))
    {
        const Reference reference = runUndisturbed(surroundings, scenario);
        Tally tally;
        tally.problems = reference.problems;
        for (std::size_t i = 0; i < faultshim::FUNCTIONS; ++i)
        {
            const auto function = static_cast<Function>(i);
            const Tally one = failEachCall(function, surroundings, scenario, reference);
            byFunction[function] += one;
            tally += one;
        }
        printRow(scenario.name, tally);
        std::fflush(stdout);
        all += tally;
    }
    printRow("all", all);
    std::printf("\n");
    printHead("Function");
    for (const auto& [function, tally] : byFunction)
    {
        printRow(std::string("`") + faultshim::nameOf(function) + "`", tally);
    }
    std::fputs(all.problems.c_str(), stderr);
    return all.problems.empty() ? 0 : 1;
}

} // namespace faults
