#pragma once

#include <string>

namespace ZolFileManagement
{

/// Removes what stands at the path, a directory with all that is in it. Links below it, and at its end, are
/// removed and never followed, whatever others swap meanwhile; those on the way to it are followed once. It
/// stops at the first entry that can't be removed, or that is gone already, and returns false.
///
/// Nothing limits the depth of the tree: neither the stack nor the number of open handles grows with it.
bool removeTree(const std::string& path);

} // namespace ZolFileManagement
