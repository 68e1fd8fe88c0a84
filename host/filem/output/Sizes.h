#pragma once

#include <cstdint>
#include <string>
#include <sys/types.h>

namespace zolhost::filem
{

/// As in "512", "4.0K", "12M": powers of 1024, rounded up.
std::string humanSize(std::uint64_t bytes);

/// "1 file", "2 files", "1 directory", "2 directories".
std::string counted(std::uint64_t count, const std::string& noun);

/// As in "drwxrws---".
std::string modeText(mode_t mode);

} // namespace zolhost::filem
