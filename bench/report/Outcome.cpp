#include "report/Outcome.h"

namespace zolbench
{

namespace
{

const std::string library = "library";

bool fails(double measured, const std::optional<double>& goal)
{
    // goals are stated with two digits behind the point
    constexpr double rounding = 0.005;
    return goal && measured >= *goal + rounding;
}

const Times& timesBesides(const Outcome& outcome, const std::string& yardstick)
{
    return yardstick == "sftp" ? outcome.times.wall : outcome.times.processor;
}

} // namespace

double timeOf(const Outcome& outcome, const std::string& way)
{
    const Times& times = timesBesides(outcome, way);
    const auto found = times.find(way);
    return found == times.end() ? 0 : median(found->second);
}

double ratioTo(const Outcome& outcome, const std::string& yardstick)
{
    return ratio(timesBesides(outcome, yardstick), library, yardstick);
}

double callsOf(const Outcome& outcome)
{
    const auto found = outcome.calls.find(library);
    return found == outcome.calls.end() ? 0 : found->second;
}

std::vector<std::string> failedGoals(const Outcome& outcome)
{
    std::vector<std::string> failed;
    const bool isUncounted = !outcome.calls.contains(library);
    if (outcome.goal.calls && (isUncounted || fails(callsOf(outcome), outcome.goal.calls)))
    {
        failed.emplace_back("calls");
    }
    if (fails(ratioTo(outcome, "strict"), outcome.goal.strict))
    {
        failed.emplace_back("strict");
    }
    if (fails(ratioTo(outcome, "sftp"), outcome.goal.sftp))
    {
        failed.emplace_back("sftp");
    }
    return failed;
}

} // namespace zolbench
