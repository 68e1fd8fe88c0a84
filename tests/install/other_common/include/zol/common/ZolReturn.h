#pragma once

#include <zol/spi/ZolReturnT.h>

namespace Zol
{

struct ZolReturn
{
    static const char* strerror(ZolReturnT code);
};

} // namespace Zol
