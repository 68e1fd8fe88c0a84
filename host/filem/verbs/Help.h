#pragma once

#include <iosfwd>
#include <string>

namespace zolhost::filem
{

/// All verbs, or one verb or class of objects. It needs no host. Throws CommandFailure for an unknown topic.
void printHelp(std::ostream& out, const std::string& topic);

} // namespace zolhost::filem
