#include "Expectation.h"

#include <algorithm>
#include <cstring>

namespace faults
{

namespace
{

void replaceAll(std::string& text, const std::string& from, const std::string& to)
{
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
    {
        text.replace(at, from.size(), to);
    }
}

bool matchesLine(std::string pattern, const std::string& line, int error)
{
    replaceAll(pattern, "{errno}", std::to_string(error));
    replaceAll(pattern, "{text}", std::strerror(error));
    return pattern.ends_with('*') ? line.starts_with(pattern.substr(0, pattern.size() - 1)) : line == pattern;
}

/// In whatever order: that of a walk isn't settled.
bool matchesLog(const Texts& got, const Texts& expected, int error, bool mayLoseALine)
{
    Texts open = expected;
    for (const std::string& line : got)
    {
        const auto found = std::find_if(open.begin(), open.end(), [&](const std::string& pattern) {
            return matchesLine(pattern.starts_with('?') ? pattern.substr(1) : pattern, line, error);
        });
        if (found == open.end())
        {
            return false;
        }
        open.erase(found);
    }
    const auto missing = std::count_if(open.begin(), open.end(),
                                       [](const std::string& line) { return !line.starts_with('?'); });
    return missing <= (mayLoseALine ? 1 : 0);
}

std::string list(const Texts& texts)
{
    std::string result;
    for (const std::string& text : texts)
    {
        result += "\n      \"" + text + "\"";
    }
    return result.empty() ? " none" : result;
}

} // namespace

std::string difference(const Outcome& got, const Outcome& expected, int error, bool mayLoseALine)
{
    if (got.answer == expected.answer && matchesLog(got.log, expected.log, error, mayLoseALine) &&
        got.messages == expected.messages && got.gone == expected.gone && got.made == expected.made &&
        got.dies == expected.dies)
    {
        return {};
    }
    return "  expected\n" + describe(expected);
}

Outcome changed(const Outcome& outcome, const Change& change)
{
    Outcome result = outcome;
    result.answer = change.answer.value_or(outcome.answer);
    result.log = change.log.value_or(outcome.log);
    append(result.log, change.moreLog);
    result.messages = change.messages.value_or(outcome.messages);
    result.gone = change.gone.value_or(outcome.gone);
    result.made = change.made.value_or(outcome.made);
    return result;
}

std::string judgeCall(const Outcome& got, const Scenario& scenario, const Fault& fault)
{
    const auto rule = std::find_if(scenario.rules.begin(), scenario.rules.end(),
                                   [&](const Rule& each) { return each.fits(fault); });
    if (rule == scenario.rules.end())
    {
        return "  no rule tells what is to come of this call\n" + describe(got);
    }
    std::string problems;
    for (const Change& change : rule->expected(fault))
    {
        const std::string problem = difference(got, changed(scenario.expected, change), fault.error);
        if (problem.empty())
        {
            return {};
        }
        problems += problem;
    }
    return "  got\n" + describe(got) + problems;
}

std::string judgeAllocation(const Outcome& got, const Scenario& scenario)
{
    if (got.dies)
    {
        return scenario.diesWithoutMemory ? "" : "  the process has ended\n";
    }
    if (difference(got, scenario.expected, ENOMEM, true).empty())
    {
        return {};
    }
    std::string problems;
    for (const Change& change : scenario.memory)
    {
        const std::string problem = difference(got, changed(scenario.expected, change), ENOMEM);
        if (problem.empty())
        {
            return {};
        }
        problems += problem;
    }
    return "  got\n" + describe(got) + problems;
}

std::string describe(const Outcome& outcome)
{
    return "    answer: " + outcome.answer + "\n    log:" + list(outcome.log) +
           "\n    messages:" + list(outcome.messages) + "\n    gone:" + list(outcome.gone) +
           "\n    made:" + list(outcome.made) + (outcome.dies ? "\n    the process has ended" : "") + "\n";
}

std::string describe(const Fault& fault)
{
    const char* const caller = fault.caller == faultshim::Caller::Component  ? "component"
                               : fault.caller == faultshim::Caller::Poco     ? "POCO"
                               : fault.caller == faultshim::Caller::CLibrary ? "the C library"
                                                                             : "other";
    return std::string(faultshim::nameOf(fault.function)) + " by " + caller + " for \"" + fault.path +
           "\", number " + std::to_string(fault.occurrence) + " of these, " + std::strerror(fault.error);
}

} // namespace faults
