#include "report/Report.h"

#include <nlohmann/json.hpp>

namespace zolbench
{

namespace
{

using nlohmann::json;

json number(const std::optional<double>& value)
{
    return value ? json(*value) : json();
}

json toJson(const Outcome& outcome)
{
    json medians = json::object();
    json ratios = json::object();
    for (const auto& entry : outcome.times.wall)
    {
        const std::string& way = entry.first;
        medians[way] = timeOf(outcome, way);
        if (way != "library")
        {
            ratios[way] = ratioTo(outcome, way);
        }
    }
    return {{"work", outcome.work},
            {"items", outcome.items},
            {"nanoseconds", medians},
            {"processorRepetitions", outcome.times.processor},
            {"wallRepetitions", outcome.times.wall},
            {"ratios", ratios},
            {"calls", outcome.calls},
            {"goal",
             {{"calls", number(outcome.goal.calls)},
              {"strict", number(outcome.goal.strict)},
              {"sftp", number(outcome.goal.sftp)}}},
            {"failed", failedGoals(outcome)}};
}

json toJson(const Check& check)
{
    return {{"what", check.what},
            {"unit", check.unit},
            {"library", check.library},
            {"comparedWith", check.comparedWith},
            {"yardstick", number(check.yardstick)},
            {"figure", check.figure},
            {"goal", check.goal},
            {"goalIsLeast", check.isLeast},
            {"holds", check.holds()}};
}

json toJson(const Listing& listing)
{
    return {{"command", listing.command},
            {"entries", listing.entries},
            {"firstLineMilliseconds", listing.firstLine},
            {"wholeMilliseconds", listing.whole},
            {"wholeOverLs", listing.wholeOverLs}};
}

json toJson(const InnerCase& inner)
{
    return {{"name", inner.name}, {"nanoseconds", inner.nanoseconds}};
}

template<class Items>
json listOf(const Items& items)
{
    json list = json::array();
    for (const auto& item : items)
    {
        list.push_back(toJson(item));
    }
    return list;
}

} // namespace

json toJson(const Report& report)
{
    return {{"surroundings", report.surroundings},
            {"rows", listOf(report.outcomes)},
            {"others", listOf(report.checks)},
            {"filem", listOf(report.listings)},
            {"inner", listOf(report.innerCases)}};
}

} // namespace zolbench
