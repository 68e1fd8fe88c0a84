#pragma once

#include "rig/Row.h"

#include <map>
#include <memory>
#include <span>
#include <vector>

namespace zolbench
{

using Ways = std::vector<std::unique_ptr<Way>>;

/// Times by way, one for each repetition. A way that doesn't do the work has none.
using Times = std::map<std::string, std::vector<double>>;

/// What a row took, in nanoseconds an item.
struct RowTimes
{
    Times processor; ///< of this process alone
    Times wall;
};

/// Measures each way in each repetition, in an order of its own, so that what else the machine does meets all
/// of them, and none always follows the one that leaves the caches cold.
RowTimes measure(const Row& row, std::span<const std::unique_ptr<Way>> ways, std::size_t repetitions);

double median(std::vector<double> values);

/// Of two ways the median of their ratios in the same repetition; 0 if one has no times.
double ratio(const Times& times, const std::string& way, const std::string& yardstick);

} // namespace zolbench
