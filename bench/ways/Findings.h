#pragma once

#include <cstdint>
#include <set>
#include <string>

namespace zolbench
{

/// What a way found, to compare it with what another found. A timed run has none.
struct Findings
{
    std::multiset<std::string> entries; ///< names, with the size where the work is about sizes
    std::multiset<std::string> details; ///< all that a listing tells, from the ways that tell it
    std::uint64_t number = 0;

    bool operator==(const Findings&) const = default;
};

} // namespace zolbench
