#pragma once

#include <string>

namespace zolhost
{

/// Why something that is there can't be removed, found by looking alone: not empty and what is in it, an
/// immutable file, a mount point, a read-only file system, a directory above it that may not be written. The
/// text of the error number and what it comes from, such as "Operation not permitted: the file is immutable".
/// Empty if nothing is in the way. The path is of a file or, without a closing slash too, a directory.
std::string obstacleToRemoving(const std::string& path);

/// The same for making a directory there.
std::string obstacleToMaking(const std::string& path);

} // namespace zolhost
