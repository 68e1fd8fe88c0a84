#pragma once

#include <cstdarg>
#include <string>

namespace Zol
{

/// The text that `vprintf` would print, of any length. The caller ends `arguments`.
std::string formatText(const char* format, std::va_list arguments) __attribute__((format(printf, 1, 0)));

} // namespace Zol
