#pragma once

#include "staging/DiskEntry.h"

#include <string>

namespace zolhost
{

/// What the operating system would say to this process, found by looking: the text of an error number and
/// what it comes from. Empty if nothing is in the way.
std::string reason(int error, const std::string& from = {});

/// Why nothing can be added to a directory or removed from it.
std::string whyNotWritable(const std::string& directory);
inline constexpr const char* NOT_WRITABLE = "the directory above may not be written";

/// Why an entry can't be removed from a directory that can be written.
std::string whyNotRemovable(const DiskEntry& directory, const DiskEntry& entry);

std::string whyModeCantChange(const std::string& path, const DiskEntry& directory);

/// What becomes of a mode that this process gives to a directory.
mode_t modeAfterChange(mode_t wanted, const DiskEntry& directory);

/// The file-creation mask of this process.
mode_t creationMask();

} // namespace zolhost
