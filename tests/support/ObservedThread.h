#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <thread>

namespace zoltest
{

/// Runs a function on a thread of its own and tells whether it waits for something. Its end waits for the
/// thread.
class ObservedThread
{
public:
    explicit ObservedThread(std::function<void()> function);
    ObservedThread(const ObservedThread&) = delete;
    ObservedThread& operator=(const ObservedThread&) = delete;
    ~ObservedThread();

    /// Returns when the function has ended, with false, or sleeps in the kernel, with true.
    bool waits() const;

private:
    std::atomic<int> _threadId = 0;
    std::atomic<bool> _done = false;
    std::thread _thread;
};

} // namespace zoltest
