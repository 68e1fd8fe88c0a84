#include <atomic>
#include <zol/common/MoRepository.h>

namespace Zol
{

namespace
{

constinit std::atomic<MoRepository*> theRepository{nullptr};

} // namespace

void MoRepository::install(MoRepository* repository) noexcept
{
    theRepository.store(repository, std::memory_order_release);
}

MoRepository* MoRepository::installed() noexcept
{
    return theRepository.load(std::memory_order_acquire);
}

} // namespace Zol
