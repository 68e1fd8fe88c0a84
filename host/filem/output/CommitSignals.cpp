#include "filem/output/CommitSignals.h"

#include <atomic>
#include <cerrno>
#include <string_view>
#include <unistd.h>

namespace zolhost::filem
{

namespace
{

std::atomic<bool> active = false;

extern "C" void refuseToStop(int /*signal*/)
{
    constexpr std::string_view TEXT = "\nfilem: a commit can't be stopped\n";
    const int before = errno;
    [[maybe_unused]] const auto written = write(STDERR_FILENO, TEXT.data(), TEXT.size());
    errno = before;
}

} // namespace

CommitSignals::CommitSignals()
{
    struct sigaction action = {};
    action.sa_handler = refuseToStop;
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, &_before);
    active = true;
}

CommitSignals::~CommitSignals()
{
    active = false;
    sigaction(SIGINT, &_before, nullptr);
}

bool CommitSignals::areActive()
{
    return active;
}

} // namespace zolhost::filem
