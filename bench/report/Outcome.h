#pragma once

#include "rig/RowCalls.h"

namespace zolbench
{

/// What was measured in a row.
struct Outcome
{
    std::string work;
    std::size_t items;
    RowTimes times;
    CallsByWay calls; ///< without entries where tracing is forbidden
    Goal goal;
};

/// The median in nanoseconds an item: of the processor, but for sftp of the clock on the wall, as its server
/// is another process. 0 if the way doesn't do the work.
double timeOf(const Outcome& outcome, const std::string& way);

/// The library's time over that of a yardstick, by the same clock; 0 if the yardstick doesn't do the work.
double ratioTo(const Outcome& outcome, const std::string& yardstick);

/// Of the library; 0 if they weren't counted.
double callsOf(const Outcome& outcome);

/// The goals that the library doesn't keep to: "calls", "strict", "sftp".
std::vector<std::string> failedGoals(const Outcome& outcome);

} // namespace zolbench
