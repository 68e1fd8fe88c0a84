#pragma once

#include "rig/Stage.h"
#include "ways/Library.h"

#include <vector>

namespace zolbench
{

/// Opens iterators on a directory, which takes a descriptor each: as many of `wanted` as the process may
/// have.
std::vector<unsigned long long> openIterators(const Library& library, unsigned long handle, const Task& task,
                                              std::size_t wanted);

} // namespace zolbench
