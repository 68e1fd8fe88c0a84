#pragma once

#include <string>

namespace zolhost
{

/// Why something can't be removed with all that is in it, found by looking alone: an immutable file, a mount
/// point, a read-only file system, a directory above it that may not be written. The text of the error number
/// and what it comes from, such as "Operation not permitted: the file is immutable"; with the first place in
/// a directory where it is, such as "Directory not empty, in logs/a: Operation not permitted: the file is
/// immutable". Empty if nothing is in the way. The path is of a file or, without a closing slash too, a
/// directory.
std::string obstacleToRemoving(const std::string& path);

/// The same for making a directory there, with those above it that are missing, and giving it its mode.
std::string obstacleToMaking(const std::string& path);

} // namespace zolhost
