#pragma once

#include <Poco/Path.h>
#include <string>

namespace ZolFileManagement
{

/// The path that a text stands for, component by component: `.` and `..` are resolved and repeated slashes
/// count as one, as Poco::Path does it, but `~` and `a:` are names like any other, where Poco::Path takes
/// them for a home directory and a device.
Poco::Path literalPath(const std::string& text);

} // namespace ZolFileManagement
