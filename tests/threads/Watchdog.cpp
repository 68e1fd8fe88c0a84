#include "threads/Watchdog.h"

#include <chrono>
#include <cstdlib>
#include <iostream>

namespace threadtest
{

namespace
{

constexpr std::chrono::seconds patience(90);

} // namespace

Watchdog::Watchdog(const std::list<HostThread>& threads)
    : _threads(threads)
    , _thread([this] { watch(); })
{}

Watchdog::~Watchdog()
{
    {
        const std::scoped_lock lock(_mutex);
        _isOver = true;
    }
    _over.notify_one();
    _thread.join();
}

void Watchdog::watch()
{
    std::unique_lock lock(_mutex);
    unsigned long long last = progress();
    while (!_over.wait_for(lock, patience, [this] { return _isOver; }))
    {
        const unsigned long long now = progress();
        if (now == last)
        {
            giveUp();
        }
        last = now;
    }
}

unsigned long long Watchdog::progress() const
{
    unsigned long long sum = 0;
    for (const HostThread& thread : _threads)
    {
        sum += thread.calls();
    }
    return sum;
}

void Watchdog::giveUp() const
{
    std::cerr << "no call has returned for " << patience.count() << " seconds\n";
    std::size_t number = 0;
    for (const HostThread& thread : _threads)
    {
        std::cerr << "thread " << number++ << ": " << thread.current() << " after " << thread.calls()
                  << " calls\n";
    }
    std::abort();
}

} // namespace threadtest
