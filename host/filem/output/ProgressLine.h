#pragma once

#include "staging/Progress.h"

#include <chrono>
#include <cstddef>
#include <iosfwd>
#include <string>

namespace zolhost::filem
{

/// Shows at a terminal how far long work is: count, rate and time. Its line is gone at the end. Where it
/// isn't shown it only looks for interrupts.
class ProgressLine
{
public:
    /// `terminal` must outlive it.
    ProgressLine(bool isShown, std::ostream& terminal, std::string what);
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine();

    /// Throws Interrupted if the operator asked for it, unless the work can't be stopped.
    void at(std::size_t done);
    void clear();
    void mustNotStop() { _canStop = false; }

    /// The same as a function; it must not outlive the line.
    Progress function();

private:
    using Clock = std::chrono::steady_clock;

    const bool _isShown;
    std::ostream& _terminal;
    const std::string _what;
    const Clock::time_point _start;
    Clock::time_point _next;
    bool _isOnScreen = false;
    bool _canStop = true;
};

} // namespace zolhost::filem
