#include "filem/output/Interrupt.h"

#include <atomic>

namespace zolhost::filem::interrupt
{

namespace
{

std::atomic<bool> requested = false;
static_assert(std::atomic<bool>::is_always_lock_free, "signal handlers set it");

} // namespace

void request() noexcept
{
    requested = true;
}

void clear() noexcept
{
    requested = false;
}

bool isRequested() noexcept
{
    return requested;
}

void check()
{
    if (requested)
    {
        throw Interrupted();
    }
}

} // namespace zolhost::filem::interrupt
