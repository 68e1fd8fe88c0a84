#pragma once

#include <array>
#include <csignal>

namespace zolhost::filem
{

/// What signals tell a shell, while it lives: its handlers only take notes, and a descriptor becomes
/// readable. A process has one at a time.
class ShellSignals
{
public:
    ShellSignals();
    ShellSignals(const ShellSignals&) = delete;
    ShellSignals& operator=(const ShellSignals&) = delete;
    ~ShellSignals();

    /// Readable after each signal, until `drain`.
    int descriptor() const { return _pipe[0]; }
    void drain() const;

    /// Whether there was one since it was asked last.
    static bool takeInterrupt();
    static bool isInterrupted(); ///< the same, not taken
    static bool takeResize();
    static bool takeContinue(); ///< the process was stopped and goes on
    /// The terminal is gone, or the shell was told to end.
    static bool mustEnd();

private:
    static constexpr std::array SIGNALS = {SIGINT, SIGHUP, SIGTERM, SIGWINCH, SIGCONT};

    std::array<int, 2> _pipe{};
    std::array<struct sigaction, SIGNALS.size()> _before{};
};

} // namespace zolhost::filem
