#pragma once

#include <Poco/Path.h>
#include <string>
#include <sys/types.h>

namespace ZolFileManagement
{

/// True if the path itself, in whatever form, is a symbolic link, also one whose target is gone; false if it
/// can't be examined.
bool isLink(const Poco::Path& path);

/// The same for the text of a path in file form. `type` is what the path itself is, as S_IFMT has it, or 0 if
/// it can't be examined.
bool isLink(const std::string& text, mode_t& type);

} // namespace ZolFileManagement
