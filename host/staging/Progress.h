#pragma once

#include <cstddef>
#include <functional>

namespace zolhost
{

/// Called now and then in long work with the number of items done so far. It may throw to end the work.
using Progress = std::function<void(std::size_t done)>;

/// Calls it for every so many items.
class ProgressCounter
{
public:
    explicit ProgressCounter(const Progress& progress)
        : _progress(progress)
    {}

    void count()
    {
        if (++_done % STEP == 0 && _progress)
        {
            _progress(_done);
        }
    }

private:
    static constexpr std::size_t STEP = 256;

    const Progress& _progress;
    std::size_t _done = 0;
};

} // namespace zolhost
