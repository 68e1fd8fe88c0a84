#pragma once

#include <cerrno>
#include <system_error>

namespace zolbench
{

/// For system calls, which leave their reason in errno.
inline void require(bool holds, const char* what)
{
    if (!holds)
    {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

} // namespace zolbench
