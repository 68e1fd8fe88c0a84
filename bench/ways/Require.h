#pragma once

#include <cerrno>
#include <stdexcept>
#include <string>
#include <system_error>
#include <zol/spi/ZolReturnT.h>

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

/// For the component's operations.
inline void requireOk(ZolReturnT code, const char* what)
{
    if (code != ZolReturnOk)
    {
        throw std::runtime_error(std::string(what) + " gives " + std::to_string(code));
    }
}

} // namespace zolbench
