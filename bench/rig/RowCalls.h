#pragma once

#include "rig/Row.h"
#include "rig/SystemCalls.h"
#include "rig/Timing.h"

#include <map>
#include <string>

namespace zolbench
{

/// The system calls that one way needs for the work of a row, preparations excluded.
SystemCalls systemCallsOf(const Row& row, Way& way);

using CallsByWay = std::map<std::string, double>;

/// System calls an item, for those of the ways that do the work in this process.
CallsByWay callsAnItem(const Row& row, const Ways& ways);

} // namespace zolbench
