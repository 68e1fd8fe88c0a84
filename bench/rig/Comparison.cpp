#include "rig/Comparison.h"

#include "rig/Table.h"

#include <ostream>

namespace zolbench
{

namespace
{

const std::string library = "library";
const std::vector<std::string> yardsticks{"floor", "strict", "literal", "std::filesystem", "sftp"};

// Goals are stated with two digits behind the point at most.
constexpr double rounding = 0.005;

double timeOf(const Outcome& outcome, const std::string& way)
{
    const auto found = outcome.times.find(way);
    return found == outcome.times.end() ? 0 : median(found->second);
}

double callsOf(const Outcome& outcome)
{
    const auto found = outcome.calls.find(library);
    return found == outcome.calls.end() ? 0 : found->second;
}

std::string withGoal(double measured, const std::optional<double>& goal)
{
    return figure(measured) + (goal ? " (" + figure(*goal) + ")" : "");
}

void addFailure(std::string& failures, const char* what, double measured, const std::optional<double>& goal)
{
    if (goal && measured >= *goal + rounding)
    {
        failures += (failures.empty() ? "no: " : ", ") + std::string(what);
    }
}

// With nothing to do: there is no list of what a way offers.
bool isOffered(const Row& row, Way& way)
{
    try
    {
        row.prepare(way);
        (way.*row.perform)(row.task, nullptr);
        return true;
    }
    catch (const NotOffered&)
    {
        return false;
    }
}

} // namespace

SystemCalls systemCallsOf(const Row& row, Way& way)
{
    return systemCallsOf([&] { row.prepare(way); }, [&] { (way.*row.perform)(row.task, nullptr); });
}

CallsByWay callsAnItem(const Row& row, const Ways& ways)
{
    CallsByWay calls;
    for (const auto& way : ways)
    {
        if (!way->worksInThisProcess() || !isOffered(row, *way))
        {
            continue;
        }
        const SystemCalls counted = systemCallsOf(row, *way);
        calls[way->name()] = static_cast<double>(total(counted)) / static_cast<double>(row.task.items.size());
    }
    return calls;
}

std::string verdict(const Outcome& outcome)
{
    const Goal& goal = outcome.goal;
    std::string failures;
    addFailure(failures, "calls", callsOf(outcome), goal.calls);
    addFailure(failures, "strict", ratio(outcome.times, library, "strict"), goal.strict);
    addFailure(failures, "sftp", ratio(outcome.times, library, "sftp"), goal.sftp);
    if (!failures.empty())
    {
        return failures;
    }
    return goal.calls || goal.strict || goal.sftp ? "yes" : "";
}

void print(std::ostream& stream, const std::vector<Outcome>& outcomes)
{
    Table table({"work", "items", "library", "floor", "strict", "literal", "std::filesystem", "sftp",
                 "library/floor", "library/strict (goal)", "library/sftp (goal)", "calls an item (goal)",
                 "holds"});
    for (const Outcome& outcome : outcomes)
    {
        std::vector<std::string> cells{outcome.work, figure(static_cast<double>(outcome.items)),
                                       figure(timeOf(outcome, library))};
        for (const std::string& yardstick : yardsticks)
        {
            cells.push_back(figure(timeOf(outcome, yardstick)));
        }
        cells.push_back(figure(ratio(outcome.times, library, "floor")));
        cells.push_back(withGoal(ratio(outcome.times, library, "strict"), outcome.goal.strict));
        cells.push_back(withGoal(ratio(outcome.times, library, "sftp"), outcome.goal.sftp));
        cells.push_back(withGoal(callsOf(outcome), outcome.goal.calls));
        cells.push_back(verdict(outcome));
        table.add(std::move(cells));
    }
    stream << table;
}

} // namespace zolbench
