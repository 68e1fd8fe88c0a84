#pragma once

#include "filem/shell/GatedOutput.h"
#include "filem/shell/ShellSignals.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace zolhost::filem
{

/// Does the work of a shell, one piece at a time, on a thread of its own, so that the operator needn't wait
/// for what can't be stopped. Ctrl-C asks the work to end; if it doesn't at once, because it is inside one
/// call of the component, it is given up: it goes on, and the next piece begins when it has ended. A commit
/// is never given up, and while a pager runs, Ctrl-C is the pager's.
class CommandThread
{
public:
    /// The output of the work goes through the gate.
    CommandThread(const ShellSignals& signals, OutputGate& gate);
    CommandThread(const CommandThread&) = delete;
    CommandThread& operator=(const CommandThread&) = delete;
    ~CommandThread();

    enum class End
    {
        Ended,
        GivenUp,
        NotBegun ///< given up while what was given up before is still at work
    };
    /// Work that is given up goes on after this returns. It must not throw.
    End run(std::function<void()> work);
    /// The same for work that a key at the terminal ends too, and that isn't worth waiting for its turn.
    End runUntilKey(std::function<void()> work);

    /// Asks what is still at work to end, and waits for it. Nothing can be run any more.
    void finish();

private:
    bool isBusy() const;
    enum class Until
    {
        Interrupt,
        InterruptOrKey
    };
    bool wait(Until until);
    void begin(std::function<void()> work);
    void loop();

    const ShellSignals& _signals;
    OutputGate& _gate;
    int _idle;         // descriptor of an event: readable unless there is work
    std::mutex _mutex; // protects the two below
    std::function<void()> _work;
    bool _isOver = false;
    std::condition_variable _changed;
    std::thread _thread;
};

} // namespace zolhost::filem
