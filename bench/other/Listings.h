#pragma once

#include "rig/Stage.h"

#include <filesystem>
#include <vector>

namespace zolbench
{

/// How long a command takes to list a directory, from its start; medians in milliseconds.
struct Listing
{
    std::string command;
    std::size_t entries;
    double firstLine;
    double whole;
    double wholeOverLs; ///< the median of the ratios to `ls -lU` in the same repetition
};

/// The operator's command and what else lists a directory, where it is installed.
std::vector<Listing> measureListings(const Stage& stage, const std::filesystem::path& filem,
                                     std::size_t entries, std::size_t repetitions);

} // namespace zolbench
