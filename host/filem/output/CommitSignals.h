#pragma once

#include <csignal>

namespace zolhost::filem
{

/// While it lives, Ctrl-C says that a commit can't be stopped, and does nothing else.
class CommitSignals
{
public:
    CommitSignals();
    CommitSignals(const CommitSignals&) = delete;
    CommitSignals& operator=(const CommitSignals&) = delete;
    ~CommitSignals();

    /// Whether there is one. Any thread may call.
    static bool areActive();

private:
    struct sigaction _before = {};
};

} // namespace zolhost::filem
