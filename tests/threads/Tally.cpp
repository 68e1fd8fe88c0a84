#include "threads/Tally.h"

#include <algorithm>
#include <ostream>
#include <set>
#include <stdexcept>

namespace threadtest
{

namespace
{

struct Rule
{
    const char* operation;
    std::set<ZolReturnT> known; ///< the handle, or the iterator, is known
    std::set<ZolReturnT> unknown;
};

// -1 from a known one is a refusal, or the answer to what others did to the disk at that moment.
const std::vector<Rule> rules = {
    {"join", {0}, {0}},
    {"prepare", {0}, {0}},
    {"commit", {0, -1}, {-2}},
    {"abort", {0}, {-2}},
    {"finish", {0}, {-2}},
    {"setMoAttribute", {-1}, {-1}},
    {"getMoAttribute of a file", {0, -1, -2}, {-2}},
    {"getMoAttribute of a directory", {0, -1, -2}, {-2}},
    {"getMoAttribute of the configuration", {0}, {-2}},
    {"getMoAttribute that is unknown", {-2}, {-2}},
    {"getMoAttributes", {0, -1, -2}, {-2}},
    {"getMoAttributes with an unknown one", {-1, -2}, {-2}},
    {"newMoIterator", {0}, {-2}},
    {"newMoIterator of an unknown class", {-1}, {-2}},
    {"nextMo", {0}, {-1, -2}},
    {"nextMo after commit or abort", {-2}, {-2}},
    {"nextMo after finish alone", {-1}, {-1}},
    {"createMo", {0, -1}, {-1}},
    {"createMo of an illegal name", {-1}, {-1}},
    {"createMo of an unknown class", {-1}, {-1}},
    {"deleteMo", {0, -1, -2}, {-1}},
    {"action remove", {0, -1}, {-1}},
    {"action removeFile", {0}, {-1}},
    {"action removeFile with a bad expression", {-1}, {-1}},
    {"action removeFile without parameters", {-8}, {-1}},
    {"action that is unknown", {-2}, {-1}},
    {"action without a place for its result", {-1}, {-1}},
    {"finalizeMoIterator", {0}, {0}},
    {"existsMo", {0, -1}, {-2}},
    {"countMoChildren", {0}, {-2}},
};

const Rule& ruleOf(std::string_view operation)
{
    for (const Rule& rule : rules)
    {
        if (rule.operation == operation)
        {
            return rule;
        }
    }
    throw std::logic_error("no operation " + std::string(operation));
}

const char* nameOf(State state)
{
    return state == State::Known ? "known" : state == State::Unknown ? "unknown" : "shared";
}

bool isPossible(const Rule& rule, State state, ZolReturnT code)
{
    return (state != State::Unknown && rule.known.contains(code)) ||
           (state != State::Known && rule.unknown.contains(code));
}

} // namespace

void Tally::note(std::string_view operation, State state, ZolReturnT code)
{
    const Rule& rule = ruleOf(operation);
    ++_counts[{rule.operation, state}][code];
    if (!isPossible(rule, state, code))
    {
        noteViolation(std::string(operation) + " on what is " + nameOf(state) + " gave " +
                      std::to_string(code));
    }
}

void Tally::add(const Tally& other)
{
    for (const auto& [key, codes] : other._counts)
    {
        for (const auto& [code, count] : codes)
        {
            _counts[key][code] += count;
        }
    }
    _violations.insert(_violations.end(), other._violations.begin(), other._violations.end());
}

unsigned long long Tally::calls() const
{
    unsigned long long sum = 0;
    for (const auto& [key, codes] : _counts)
    {
        for (const auto& [code, count] : codes)
        {
            sum += count;
        }
    }
    return sum;
}

void Tally::print(std::ostream& stream) const
{
    for (const auto& [key, codes] : _counts)
    {
        stream << key.first << ", " << nameOf(key.second) << ':';
        for (const auto& [code, count] : codes)
        {
            stream << ' ' << code << " x " << count;
        }
        stream << '\n';
    }
}

std::vector<std::string> Tally::missing() const
{
    std::vector<std::string> missing;
    for (const Rule& rule : rules)
    {
        const auto isOfRule = [&rule](const auto& entry) { return entry.first.first == rule.operation; };
        if (std::none_of(_counts.begin(), _counts.end(), isOfRule))
        {
            missing.emplace_back(rule.operation);
        }
    }
    return missing;
}

} // namespace threadtest
