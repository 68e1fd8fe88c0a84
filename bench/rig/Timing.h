#pragma once

#include "rig/Row.h"

#include <map>
#include <memory>
#include <vector>

namespace zolbench
{

using Ways = std::vector<std::unique_ptr<Way>>;

/// The times of a row by way, one for each repetition, in nanoseconds an item. A way that doesn't do the work
/// has none.
using Times = std::map<std::string, std::vector<double>>;

/// Measures each way in each repetition, beginning with another one each time, so that what else the machine
/// does meets all of them.
Times measure(const Row& row, const Ways& ways, std::size_t repetitions);

double median(std::vector<double> values);

/// Of two ways the median of their ratios in the same repetition; 0 if one has no times.
double ratio(const Times& times, const std::string& way, const std::string& yardstick);

} // namespace zolbench
