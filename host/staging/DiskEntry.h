#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zolhost
{

/// What one entry of the disk is.
enum class EntryKind
{
    Directory,
    File,
    Link,
    Other ///< socket, pipe or device
};

/// What the disk knows of an entry. A link stands for itself.
struct DiskEntry
{
    EntryKind kind = EntryKind::File;
    mode_t mode = 0; ///< the permission bits, the set-ID and sticky ones included
    uid_t owner = 0;
    gid_t group = 0;
    std::uint64_t bytes = 0;
    dev_t device = 0;
    ino_t number = 0;
    std::int64_t born = 0; ///< nanoseconds; 0 if the file system doesn't know
    std::int64_t modified = 0;
    bool isImmutable = false;
    bool isAppendOnly = false;
    bool isMountPoint = false;
};

/// Nothing if it isn't there or can't be looked at; `errno` says which.
std::optional<DiskEntry> lookUp(const std::string& path);

/// Whether nothing can be there, by the error number of looking it up.
bool meansAbsence(int error);

/// The names in a directory, in the disk's order. Nothing if it can't be read; `errno` says why.
std::optional<std::vector<std::string>> namesIn(const std::string& directory);

/// What a link holds; empty if it can't be read.
std::string linkTargetOf(const std::string& path);

std::string withoutSlash(const std::string& path);

/// The directory above; empty for what is in "/".
std::string directoryAbove(const std::string& path);

std::string lastNameOf(const std::string& path);

/// The path of an entry of a directory.
std::string pathIn(const std::string& directory, const std::string& name);

} // namespace zolhost
