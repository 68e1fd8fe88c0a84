#include "MemoryWatch.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <sanitizer/allocator_interface.h>

namespace zolfuzz
{

namespace
{

std::atomic<bool> isWatching = false;
std::atomic<long long> allocated = 0;
std::atomic<long long> mostAllocated = 0;

void onMalloc(const volatile void* /*block*/, std::size_t size)
{
    if (isWatching)
    {
        allocated += static_cast<long long>(size);
        mostAllocated = std::max(mostAllocated.load(), allocated.load());
    }
}

void onFree(const volatile void* block)
{
    if (isWatching && block != nullptr)
    {
        allocated -= static_cast<long long>(__sanitizer_get_allocated_size(const_cast<const void*>(block)));
    }
}

} // namespace

MemoryWatch::MemoryWatch()
{
    static const int installed = __sanitizer_install_malloc_and_free_hooks(onMalloc, onFree);
    if (installed == 0)
    {
        std::abort();
    }
    allocated = 0;
    mostAllocated = 0;
    isWatching = true;
}

MemoryWatch::~MemoryWatch()
{
    isWatching = false;
}

std::size_t MemoryWatch::peak() const
{
    return static_cast<std::size_t>(mostAllocated.load());
}

} // namespace zolfuzz
