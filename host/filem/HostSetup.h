#pragma once

#include "engine/Host.h"
#include "filem/CommandLine.h"

namespace zolhost::filem
{

/// The library, the configuration and the policies that the program was called with. Throws CommandFailure.
Host::Setup setupOf(const CommandLine& line);

/// The component's log stands beside what filem says only if somebody wants it. To be called before a host
/// comes up.
void keepLogFromOperator();

} // namespace zolhost::filem
