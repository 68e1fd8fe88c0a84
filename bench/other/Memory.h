#pragma once

#include "report/Check.h"
#include "rig/Stage.h"

#include <filesystem>

namespace zolbench
{

/// What is measured in a process of its own, which has no memory of other work to use again.
enum class MemoryOf
{
    names,     ///< all browsed and none given back
    listing,   ///< `files` at its peak
    iterators, ///< open ones
};

/// In the process of its own: bytes that have become resident, for each of so many items.
double residentBytesAnItem(MemoryOf what, std::size_t items, const std::filesystem::path& library,
                           const std::string& root);

/// Starts this program for each. Names are browsed in directories of all these sizes, and listed in the
/// first.
std::vector<Check> checkMemory(const Stage& stage, const std::filesystem::path& library,
                               const std::vector<std::size_t>& sizes);

/// What this program is started with for that.
extern const char* const memoryOption;

} // namespace zolbench
