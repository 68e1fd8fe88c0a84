#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace zoltest
{

/// A folder in memory, where there is one, otherwise that of all temporary files: a disk takes minutes for
/// the many small trees of some tests. Programs may not be allowed to run there.
inline std::string memoryFolder()
{
    constexpr const char* folder = "/dev/shm";
    return ::access(folder, R_OK | W_OK | X_OK) == 0 ? folder
                                                     : std::filesystem::temp_directory_path().string();
}

/// Temporary files of this process lie there, unless its environment names a folder for them.
inline void useMemoryFolder()
{
    ::setenv("TMPDIR", memoryFolder().c_str(), 0);
}

} // namespace zoltest
