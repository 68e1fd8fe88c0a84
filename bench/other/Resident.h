#pragma once

#include <cstdint>

namespace zolbench
{

/// The memory of this process that is in use, in bytes, page by page.
std::uint64_t residentBytes();

/// The most that was in use since the last call of `forgetPeak`.
std::uint64_t peakResidentBytes();
void forgetPeak();

} // namespace zolbench
