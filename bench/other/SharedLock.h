#pragma once

#include "report/Check.h"
#include "rig/Stage.h"
#include "ways/Library.h"

namespace zolbench
{

/// Threads of a host that all want something of the component, against threads that look at the same files
/// one at a time: calls a second of all together.
std::vector<Check> checkSharedLock(const Stage& stage, const Library& library, std::size_t repetitions);

} // namespace zolbench
