#pragma once

#include <functional>
#include <string>
#include <sys/types.h>

namespace zoltest
{

/// Stands between the component and what it asks of the system, until the end of this object. What is not set
/// goes straight through. At most one object lives at a time, in a process with one thread.
class SystemFaults
{
public:
    SystemFaults();
    SystemFaults(const SystemFaults&) = delete;
    SystemFaults& operator=(const SystemFaults&) = delete;
    ~SystemFaults();

    // Each is called before the true call; what it returns is the error of the call, 0 for the true answer.
    std::function<int(const std::string& path, mode_t mode)> chmod;
    std::function<int(const std::string& path, uid_t owner, gid_t group)> chown;
    std::function<int(const std::string& path)> stat;

    // Called before the true call, and may throw.
    std::function<void(const std::string& path)>
        createDirectory; ///< each that is not there, ancestors too, all by POCO then
    std::function<void(const std::string& path)> remove; ///< a whole tree, without a closing slash
    std::function<void(const void* memory)> free;        ///< must not free anything
};

} // namespace zoltest
