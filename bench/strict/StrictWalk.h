#pragma once

#include "strict/StrictNames.h"
#include "ways/DirectoryHandle.h"
#include "ways/DirectoryRead.h"

#include <optional>
#include <string>
#include <sys/stat.h>

namespace zolbench
{

enum class StrictKind
{
    file,
    directory,
    other, ///< also a marker and a link to anything but a directory
};

/// What an entry of an open directory counts as, by its type as far as that says it.
StrictKind strictKind(int directory, const char* name, unsigned char type);

/// Whether entries of an open directory may be looked up: what can only be read has no children.
inline bool isSearchable(int directory)
{
    struct stat status
    {};
    return ::fstatat(directory, ".", &status, 0) == 0;
}

/// Calls `visit(const char* name, StrictKind kind)` for each entry of an open directory within one call.
template<class Visit>
void strictWalk(int directory, Visit visit)
{
    std::optional<bool> searchable;
    readDirectory(directory, [&](const char* name, unsigned char type) {
        if (!searchable)
        {
            searchable = isSearchable(directory);
        }
        if (*searchable)
        {
            visit(name, strictKind(directory, name, type));
        }
    });
}

} // namespace zolbench
