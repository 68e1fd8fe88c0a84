#include "filem/shell/CommandThread.h"

#include "filem/output/CommitSignals.h"
#include "filem/output/Interrupt.h"
#include "filem/output/Pager.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <optional>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace zolhost::filem
{

namespace
{

using Clock = std::chrono::steady_clock;

/// Within a tenth of a second the operator has the prompt again.
constexpr std::chrono::milliseconds PATIENCE(80);
/// Keys that come so soon were typed ahead, not to end anything.
constexpr std::chrono::milliseconds TYPED_AHEAD(300);

int millisecondsUntil(const std::optional<Clock::time_point>& time)
{
    if (!time)
    {
        return -1;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*time - Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

} // namespace

CommandThread::CommandThread(const ShellSignals& signals, OutputGate& gate)
    : _signals(signals)
    , _gate(gate)
    , _idle(eventfd(1, EFD_CLOEXEC | EFD_NONBLOCK))
{
    if (_idle == -1)
    {
        throw std::system_error(errno, std::generic_category(), "no event for commands");
    }
    _thread = std::thread([this] { loop(); });
}

CommandThread::~CommandThread()
{
    finish();
    close(_idle);
}

void CommandThread::finish()
{
    if (!_thread.joinable())
    {
        return;
    }
    interrupt::request();
    {
        const std::scoped_lock lock(_mutex);
        _isOver = true;
    }
    _changed.notify_one();
    _thread.join();
    interrupt::clear();
    _gate.open();
}

CommandThread::End CommandThread::run(std::function<void()> work)
{
    if (!wait(Until::Interrupt) || ShellSignals::mustEnd())
    {
        return End::NotBegun;
    }
    begin(std::move(work));
    return wait(Until::Interrupt) ? End::Ended : End::GivenUp;
}

CommandThread::End CommandThread::runUntilKey(std::function<void()> work)
{
    if (isBusy())
    {
        return End::NotBegun;
    }
    begin(std::move(work));
    return wait(Until::InterruptOrKey) ? End::Ended : End::GivenUp;
}

void CommandThread::begin(std::function<void()> work)
{
    eventfd_t value = 0;
    eventfd_read(_idle, &value);
    interrupt::clear();
    _gate.open();
    {
        const std::scoped_lock lock(_mutex);
        _work = std::move(work);
    }
    _changed.notify_one();
}

bool CommandThread::isBusy() const
{
    pollfd event = {_idle, POLLIN, 0};
    return poll(&event, 1, 0) != 1;
}

/// False if it was given up.
bool CommandThread::wait(Until until)
{
    std::optional<Clock::time_point> end;
    std::optional<Clock::time_point> keysCount;
    if (until == Until::InterruptOrKey)
    {
        keysCount = Clock::now() + TYPED_AHEAD;
    }
    while (true)
    {
        if (ShellSignals::mustEnd())
        {
            interrupt::request();
            Pager::stop();
        }
        const bool looksForKey = keysCount && Clock::now() >= *keysCount && !end;
        std::array<pollfd, 3> events = {{{_idle, POLLIN, 0},
                                         {_signals.descriptor(), POLLIN, 0},
                                         {looksForKey ? STDIN_FILENO : -1, POLLIN, 0}}};
        poll(events.data(), events.size(), millisecondsUntil(end || looksForKey ? end : keysCount));
        if (events[0].revents != 0)
        {
            // what the work has written is seen from here on
            const std::scoped_lock lock(_mutex);
            return true;
        }
        _signals.drain();
        const bool hasKey = events[2].revents != 0;
        // where a line is being typed, it is for that line too
        const bool isInterrupted = until == Until::InterruptOrKey
                                       ? ShellSignals::isInterrupted()
                                       : ShellSignals::takeInterrupt() && !Pager::isAtWork();
        if ((hasKey || isInterrupted) && !end)
        {
            interrupt::request();
            end = Clock::now() + PATIENCE;
        }
        if (end && Clock::now() >= *end && !CommitSignals::areActive())
        {
            _gate.close();
            return false;
        }
    }
}

void CommandThread::loop()
{
    std::unique_lock lock(_mutex);
    while (true)
    {
        _changed.wait(lock, [this] { return _work != nullptr || _isOver; });
        if (_work == nullptr)
        {
            return;
        }
        const auto work = std::exchange(_work, nullptr);
        lock.unlock();
        work();
        lock.lock();
        eventfd_write(_idle, 1);
    }
}

} // namespace zolhost::filem
