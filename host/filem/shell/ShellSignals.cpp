#include "filem/shell/ShellSignals.h"

#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <system_error>
#include <unistd.h>

namespace zolhost::filem
{

namespace
{

std::atomic<bool> interrupted = false;
std::atomic<bool> resized = false;
std::atomic<bool> continued = false;
std::atomic<bool> ended = false;
std::atomic<int> wakeDescriptor = -1;

extern "C" void takeNote(int signal)
{
    const int before = errno;
    switch (signal)
    {
    case SIGINT:
        interrupted = true;
        break;
    case SIGWINCH:
        resized = true;
        break;
    case SIGCONT:
        continued = true;
        break;
    default:
        ended = true;
    }
    const char note = 0;
    [[maybe_unused]] const auto written = write(wakeDescriptor, &note, 1);
    errno = before;
}

} // namespace

ShellSignals::ShellSignals()
{
    if (pipe2(_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
    {
        throw std::system_error(errno, std::generic_category(), "no pipe for signals");
    }
    wakeDescriptor = _pipe[1];
    for (auto* const flag : {&interrupted, &resized, &continued, &ended})
    {
        *flag = false;
    }
    struct sigaction action = {};
    action.sa_handler = takeNote;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < SIGNALS.size(); ++i)
    {
        sigaction(SIGNALS[i], &action, &_before[i]);
    }
}

ShellSignals::~ShellSignals()
{
    for (std::size_t i = 0; i < SIGNALS.size(); ++i)
    {
        sigaction(SIGNALS[i], &_before[i], nullptr);
    }
    wakeDescriptor = -1;
    close(_pipe[0]);
    close(_pipe[1]);
}

void ShellSignals::drain() const
{
    std::array<char, 64> notes{};
    while (read(_pipe[0], notes.data(), notes.size()) > 0)
    {}
}

bool ShellSignals::takeInterrupt()
{
    return interrupted.exchange(false);
}

bool ShellSignals::isInterrupted()
{
    return interrupted;
}

bool ShellSignals::takeResize()
{
    return resized.exchange(false);
}

bool ShellSignals::takeContinue()
{
    return continued.exchange(false);
}

bool ShellSignals::mustEnd()
{
    return ended;
}

} // namespace zolhost::filem
