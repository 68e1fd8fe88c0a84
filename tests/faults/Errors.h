#pragma once

#include "FaultShim.h"

#include <vector>

namespace faults
{

/// The errors that make sense for a function. The first is the one for short runs.
const std::vector<int>& errorsOf(faultshim::Function function);

} // namespace faults
