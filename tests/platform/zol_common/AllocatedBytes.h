#pragma once

#include <cstddef>
#include <malloc.h>

// That of a sanitizer which has its own memory.
extern "C" __attribute__((weak)) std::size_t __sanitizer_get_current_allocated_bytes();

namespace zoltest
{

/// What this process has allocated and not freed.
inline std::size_t allocatedBytes()
{
    return __sanitizer_get_current_allocated_bytes != nullptr ? __sanitizer_get_current_allocated_bytes()
                                                              : mallinfo2().uordblks;
}

} // namespace zoltest
