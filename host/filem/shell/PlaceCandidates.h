#pragma once

#include "filem/shell/Candidates.h"

#include <string>

namespace zolhost::filem
{

/// Places that begin with what is typed: paths, and DNs once a class is begun. As the transaction of the
/// session sees the tree. Throws Interrupted.
Candidates placesFor(const std::string& typed, bool directoriesOnly, Session& session);

} // namespace zolhost::filem
