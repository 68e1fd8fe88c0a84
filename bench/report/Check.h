#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zolbench
{

/// Something measured beside the rows, with what it is held against.
struct Check
{
    std::string what;
    std::string unit;
    double library;                  ///< what was measured
    std::string comparedWith;        ///< a yardstick in words; empty without one
    std::optional<double> yardstick; ///< in the same unit
    double figure;                   ///< what the goal is about: a ratio, or what was measured
    double goal;
    bool isLeast = false; ///< whether the goal is a lower bound

    bool holds() const
    {
        constexpr double tolerance = 0.02; // times and pages are coarser than that
        return isLeast ? figure >= goal * (1 - tolerance) : figure <= goal * (1 + tolerance);
    }
};

} // namespace zolbench
