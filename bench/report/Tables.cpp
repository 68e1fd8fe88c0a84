#include "report/Report.h"
#include "report/Table.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <sstream>

namespace zolbench
{

namespace
{

const std::vector<std::string> yardsticks{"floor", "strict", "literal", "std::filesystem", "sftp"};

std::string withGoal(double measured, const std::optional<double>& goal)
{
    return figure(measured) + (goal ? " (" + figure(*goal) + ")" : "");
}

std::string joined(const std::vector<std::string>& parts)
{
    std::string text;
    for (const std::string& part : parts)
    {
        text += (text.empty() ? "" : ", ") + part;
    }
    return text;
}

std::string verdict(const Outcome& outcome)
{
    const Goal& goal = outcome.goal;
    const auto failed = failedGoals(outcome);
    if (!failed.empty())
    {
        return "no: " + joined(failed);
    }
    if (!goal.calls && !goal.strict && !goal.sftp)
    {
        return "-";
    }
    const bool isUnmeasured =
        (goal.strict && ratioTo(outcome, "strict") == 0) || (goal.sftp && ratioTo(outcome, "sftp") == 0);
    return isUnmeasured ? "as far as it was measured" : "yes";
}

std::string count(std::size_t number)
{
    return withThousands(std::to_string(number));
}

Table timeTable(const std::vector<Outcome>& outcomes)
{
    Table table({"work", "items", "library", "floor", "strict", "literal", "std::filesystem", "sftp"});
    for (const Outcome& outcome : outcomes)
    {
        std::vector<std::string> cells{outcome.work, count(outcome.items),
                                       figure(timeOf(outcome, "library"))};
        for (const std::string& yardstick : yardsticks)
        {
            cells.push_back(figure(timeOf(outcome, yardstick)));
        }
        table.add(std::move(cells));
    }
    return table;
}

Table goalTable(const std::vector<Outcome>& outcomes)
{
    Table table({"work", "items", "calls an item", "library/strict", "library/sftp", "library/floor",
                 "library/literal", "holds"});
    for (const Outcome& outcome : outcomes)
    {
        table.add({outcome.work, count(outcome.items), withGoal(callsOf(outcome), outcome.goal.calls),
                   withGoal(ratioTo(outcome, "strict"), outcome.goal.strict),
                   withGoal(ratioTo(outcome, "sftp"), outcome.goal.sftp), figure(ratioTo(outcome, "floor")),
                   figure(ratioTo(outcome, "literal")), verdict(outcome)});
    }
    return table;
}

Table growthTable(const std::vector<Outcome>& outcomes)
{
    std::set<std::size_t> sizes;
    std::vector<std::string> works;
    std::map<std::pair<std::string, std::size_t>, double> times;
    for (const Outcome& outcome : outcomes)
    {
        sizes.insert(outcome.items);
        times[{outcome.work, outcome.items}] = timeOf(outcome, "library");
        if (works.empty() || works.back() != outcome.work)
        {
            works.push_back(outcome.work);
        }
    }
    std::vector<std::string> head{"library, ns an item"};
    std::transform(sizes.begin(), sizes.end(), std::back_inserter(head), count);
    Table table(head);
    for (const std::string& work : works)
    {
        std::vector<std::string> cells{work};
        for (const std::size_t size : sizes)
        {
            cells.push_back(figure(times[{work, size}]));
        }
        table.add(std::move(cells));
    }
    return table;
}

Table checkTable(const std::vector<Check>& checks)
{
    Table table({"what", "library", "yardstick", "ratio", "goal", "holds"});
    for (const Check& check : checks)
    {
        const std::string bound = (check.isLeast ? "at least " : "at most ") + figure(check.goal);
        table.add(
            {check.what, figure(check.library) + ' ' + check.unit,
             check.yardstick ? figure(*check.yardstick) + ' ' + check.unit + ", " + check.comparedWith : "-",
             check.yardstick ? figure(check.figure) : "-", check.yardstick ? bound : bound + ' ' + check.unit,
             check.holds() ? "yes" : "no"});
    }
    return table;
}

Table listingTable(const std::vector<Listing>& listings)
{
    Table table({"command", "entries", "first line, ms", "whole, ms", "ns an entry", "whole/`ls -lU`"});
    for (const Listing& listing : listings)
    {
        constexpr double nanoseconds = 1e6;
        table.add({'`' + listing.command + '`', count(listing.entries), figure(listing.firstLine),
                   figure(listing.whole),
                   figure(listing.whole * nanoseconds / static_cast<double>(listing.entries)),
                   figure(listing.wholeOverLs)});
    }
    return table;
}

Table innerTable(const std::vector<InnerCase>& cases)
{
    Table table({"case", "ns"});
    for (const InnerCase& inner : cases)
    {
        table.add({'`' + inner.name + '`', figure(inner.nanoseconds)});
    }
    return table;
}

std::string text(const Table& table)
{
    std::ostringstream stream;
    stream << table;
    return stream.str();
}

} // namespace

std::map<std::string, std::string> tablesOf(const Report& report)
{
    std::map<std::string, std::string> tables{{"surroundings", report.surroundings + '\n'}};
    if (!report.outcomes.empty())
    {
        tables["times"] = text(timeTable(report.outcomes));
        tables["goals"] = text(goalTable(report.outcomes));
        tables["growth"] = text(growthTable(report.outcomes));
    }
    if (!report.checks.empty())
    {
        tables["others"] = text(checkTable(report.checks));
    }
    if (!report.listings.empty())
    {
        tables["filem"] = text(listingTable(report.listings));
    }
    if (!report.innerCases.empty())
    {
        tables["inner"] = text(innerTable(report.innerCases));
    }
    return tables;
}

} // namespace zolbench
