#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace zolbench
{

/// What a run is to measure and where.
struct Options
{
    std::filesystem::path folder = "/dev/shm";
    std::filesystem::path library;
    std::filesystem::path filem;
    std::vector<std::size_t> items{1000, 10000, 100000};
    std::size_t repetitions = 5;
    bool large = false; ///< also a million
    std::vector<std::string> only;

    std::vector<std::string> ways; ///< all, if there are none

    /// Whether one of the texts of `only`, if there are any, is in the name.
    bool wants(const std::string& name) const;
};

} // namespace zolbench
