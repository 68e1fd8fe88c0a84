#pragma once

#include <functional>
#include <string>

namespace zoltest
{

/// Sees each call by which this process looks at the disk or changes it, just before it is made: those of the
/// component, of POCO and of the test. What the function does to the disk itself is not shown to it. At most
/// one object lives at a time, in a process with one thread.
class SystemCalls
{
public:
    struct Call
    {
        std::string
            name; ///< without what marks variants for large files; "rmdir" also for unlinkat of a directory
        std::string path; ///< as the caller gives it; empty where it gives a handle alone
    };
    using Function = std::function<void(const Call&)>;

    explicit SystemCalls(Function before);
    SystemCalls(const SystemCalls&) = delete;
    SystemCalls& operator=(const SystemCalls&) = delete;
    ~SystemCalls();
};

} // namespace zoltest
