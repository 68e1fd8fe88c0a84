#pragma once

#include <cstdint>
#include <string>

namespace ZolFileManagement
{

/// One file of the attribute `files`. Orders by name alone, byte by byte.
struct FileInfo
{
    std::string fileName; // as on disk, not encoded
    std::uint64_t size = 0;
    std::string fileType; // the extension without the dot
    std::string modificationTime;

    bool operator<(const FileInfo& other) const { return fileName < other.fileName; }
};

} // namespace ZolFileManagement
