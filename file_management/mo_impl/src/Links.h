#pragma once

#include <Poco/Path.h>
#include <string>
#include <sys/types.h>

namespace ZolFileManagement
{

/// True if the path itself, in whatever form, is a symbolic link, also one whose target is gone; false if it
/// can't be examined.
bool isLink(const Poco::Path& path);

/// What a path in file form itself is, as S_IFMT has it, or 0 if it can't be examined.
mode_t entryType(const std::string& text);

} // namespace ZolFileManagement
