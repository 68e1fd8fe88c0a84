#pragma once

#include <mutex>

namespace Zol
{

/// A mutual exclusion that can stand in static storage and be used before any constructor has run.
class ZolThreadLock
{
public:
    constexpr ZolThreadLock() = default;
    ZolThreadLock(const ZolThreadLock&) = delete;
    ZolThreadLock& operator=(const ZolThreadLock&) = delete;

    /// Waits until it is free. Not to be called again by the thread that has it.
    void lock();
    /// Frees it, on the thread that has it.
    void unlock();

private:
    std::mutex _mutex;
};

} // namespace Zol
