#include "support/ObservedThread.h"

#include <fstream>
#include <unistd.h>
#include <utility>

namespace zoltest
{

namespace
{

bool sleeps(int threadId)
{
    std::ifstream status("/proc/self/task/" + std::to_string(threadId) + "/stat");
    std::string line;
    std::getline(status, line);
    // the state follows the name, which stands in brackets and may hold anything
    const auto name = line.rfind(')');
    return name != std::string::npos && line.compare(name, 3, ") S") == 0;
}

} // namespace

ObservedThread::ObservedThread(std::function<void()> function)
    : _thread([this, function = std::move(function)] {
        _threadId = gettid();
        function();
        _done = true;
    })
{}

ObservedThread::~ObservedThread()
{
    _thread.join();
}

bool ObservedThread::waits() const
{
    while (!_done)
    {
        if (const int threadId = _threadId; threadId != 0 && sleeps(threadId))
        {
            return !_done;
        }
        std::this_thread::yield();
    }
    return false;
}

} // namespace zoltest
