#pragma once

#include <chrono>
#include <ctime>

namespace zolbench
{

/// The processor's time for all threads of this process: what others do on the machine in between doesn't
/// count.
struct ProcessorClock
{
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<ProcessorClock>;
    static constexpr bool is_steady = true;

    static time_point now()
    {
        timespec time{};
        ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
        return time_point(std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec));
    }
};

} // namespace zolbench
