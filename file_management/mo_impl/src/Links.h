#pragma once

#include <Poco/Path.h>

namespace ZolFileManagement
{

/// True if the path itself, in whatever form, is a symbolic link, also one whose target is gone; false if it
/// can't be examined.
bool isLink(const Poco::Path& path);

} // namespace ZolFileManagement
