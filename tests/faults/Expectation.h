#pragma once

#include "Scenario.h"

#include <string>

namespace faults
{

/// Empty, or what is wrong with an outcome. A line may be missing from the log if that is said.
std::string difference(const Outcome& got, const Outcome& expected, int error, bool mayLoseALine = false);

Outcome changed(const Outcome& outcome, const Change& change);

/// Empty, or what is wrong with the outcome of a failed call or allocation.
std::string judgeCall(const Outcome& got, const Scenario& scenario, const Fault& fault);
std::string judgeAllocation(const Outcome& got, const Scenario& scenario);

std::string describe(const Outcome& outcome);
std::string describe(const Fault& fault);

} // namespace faults
