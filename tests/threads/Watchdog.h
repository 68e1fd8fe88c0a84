#pragma once

#include "threads/HostThread.h"

#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>

namespace threadtest
{

/// Ends the process, telling what each thread was doing, when no thread has made any progress for a time that
/// no operation takes, or when they don't come to their end.
class Watchdog
{
public:
    explicit Watchdog(const std::list<HostThread>& threads);
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;
    ~Watchdog();

private:
    void watch();
    unsigned long long progress() const;
    [[noreturn]] void giveUp() const;

    const std::list<HostThread>& _threads;
    std::mutex _mutex; // protects _isOver
    std::condition_variable _over;
    bool _isOver = false;
    std::thread _thread;
};

} // namespace threadtest
