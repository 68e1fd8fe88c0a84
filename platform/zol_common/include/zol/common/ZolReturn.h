#pragma once

#include <zol/spi/ZolReturnT.h>

namespace Zol
{

/// Codes in words.
class ZolReturn
{
public:
    /// Text for a code, of static lifetime; never null.
    static const char* strerror(ZolReturnT code) noexcept;
};

} // namespace Zol
