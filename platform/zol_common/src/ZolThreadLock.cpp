#include <type_traits>
#include <zol/common/ZolThreadLock.h>

namespace Zol
{

static_assert(std::is_trivially_destructible_v<ZolThreadLock>,
              "a lock in static storage is usable until the process ends");

void ZolThreadLock::lock()
{
    _mutex.lock();
}

void ZolThreadLock::unlock()
{
    _mutex.unlock();
}

} // namespace Zol
