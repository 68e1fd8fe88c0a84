#pragma once

#include <cstddef>
#include <dirent.h>
#include <functional>
#include <optional>
#include <string>
#include <sys/stat.h>

namespace zoltest
{

/// What the operating system and the libraries answer the component and the test until the end of this
/// object, instead of the truth. At most one object lives at a time, in a process with one thread.
class Faults
{
public:
    Faults();
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;
    ~Faults();

    /// Sees the path before the true call. What it returns is the error of the call, 0 for the true answer.
    using Call = std::function<int(const std::string& path)>;

    Call lstat;
    Call stat;
    Call readlink;
    std::function<int()> getdents; ///< before the true call; returns its error, 0 for the true answer
    std::function<void(dirent64& entry)> entryRead;      ///< for each that the true call gave; may change it
    std::function<void(struct stat& status)> statAnswer; ///< changes the true answer
    std::optional<std::string> linkTarget;               ///< cut to the room that the caller gives
    std::optional<int> popenError;                       ///< 0: it fails without telling why
    std::size_t failingAllocation = 0;                   ///< the size of an object that can't be allocated
    bool textsCantBeCopied = false;
    bool listsCantBeAllocated = false; ///< those of several results
    std::function<void()> classOfDn;   ///< may throw

    std::size_t roomForLinkTarget = 0; ///< as the component gave it last
};

} // namespace zoltest
