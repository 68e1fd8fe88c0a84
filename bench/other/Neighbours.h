#pragma once

#include "report/Check.h"
#include "rig/Stage.h"
#include "ways/Library.h"

namespace zolbench
{

/// What an empty commit pays for the iterators that another transaction has open.
Check checkNeighbours(const Stage& stage, const Library& library, std::size_t repetitions);

} // namespace zolbench
