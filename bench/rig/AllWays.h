#pragma once

#include "rig/Timing.h"
#include "ways/Library.h"

namespace zolbench
{

/// The library first, then its yardsticks; sftp-server if it is installed.
Ways allWays(const Library& library, const std::string& root);

/// So many of the first ones do the rows of more items than all could do in reasonable time.
constexpr std::size_t waysOfLargeRows = 3;

} // namespace zolbench
