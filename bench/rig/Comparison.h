#pragma once

#include "rig/Rows.h"
#include "rig/SystemCalls.h"
#include "rig/Timing.h"

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace zolbench
{

using CallsByWay = std::map<std::string, double>;

/// What was measured in a row.
struct Outcome
{
    std::string work;
    std::size_t items;
    Times times;
    CallsByWay calls; ///< system calls an item
    Goal goal;
};

/// The system calls of one way, preparations excluded.
SystemCalls systemCallsOf(const Row& row, Way& way);

/// For those of the ways that do the work in this process.
CallsByWay callsAnItem(const Row& row, const Ways& ways);

/// "yes", or what doesn't hold; empty without a goal.
std::string verdict(const Outcome& outcome);

/// As a table of times, ratios and calls.
void print(std::ostream& stream, const std::vector<Outcome>& outcomes);

} // namespace zolbench
