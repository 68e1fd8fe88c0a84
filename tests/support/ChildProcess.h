#pragma once

#include <functional>
#include <string>

namespace zoltest
{

/// How a child process ended.
struct ChildOutcome
{
    int exitStatus = -1; ///< what the function returned; -1 if a signal ended it
    int signal = 0;      ///< the signal that ended it, or 0
    std::string standardError;
};

/// Runs the function in a child of its own and waits for its end. An exception out of the function ends the
/// child with SIGABRT. The caller must be the only thread.
ChildOutcome runInChild(const std::function<int()>& function);

} // namespace zoltest
