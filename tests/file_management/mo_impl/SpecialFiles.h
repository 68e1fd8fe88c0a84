#pragma once

#include <string>

namespace zoltest
{

/// Leave behind what is neither a file nor a directory, and return its path.
std::string makePipe(const std::string& path);
std::string makeSocket(const std::string& path);

} // namespace zoltest
