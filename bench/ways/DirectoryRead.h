#pragma once

#include "ways/Require.h"

#include <cstddef>
#include <cstdint>
#include <dirent.h>
#include <memory>

namespace zolbench
{

inline bool isDot(const char* name)
{
    return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

/// Calls `visit(const char* name, unsigned char type)` for each entry of an open directory but `.` and `..`,
/// which the kernel hands out by the buffer.
template<class Visit>
void readDirectory(int directory, Visit visit)
{
    // not on the stack: a visit may read what is below
    constexpr std::size_t bufferSize = 32768;
    const auto buffer = std::make_unique_for_overwrite<char[]>(bufferSize);
    for (;;)
    {
        const ssize_t size = ::getdents64(directory, buffer.get(), bufferSize);
        require(size >= 0, "getdents64");
        if (size == 0)
        {
            return;
        }
        for (ssize_t at = 0; at < size;)
        {
            const auto* entry = reinterpret_cast<const dirent64*>(buffer.get() + at);
            const char* name = static_cast<const char*>(entry->d_name);
            if (!isDot(name))
            {
                visit(name, entry->d_type);
            }
            at += entry->d_reclen;
        }
    }
}

} // namespace zolbench
