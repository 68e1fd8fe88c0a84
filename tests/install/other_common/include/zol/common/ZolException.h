#pragma once

#include <stdexcept>
#include <zol/spi/ZolReturnT.h>

namespace Zol
{

class ZolException : public std::runtime_error
{
public:
    explicit ZolException(const char* format, ...);
    ZolException(ZolReturnT code, const char* format, ...);
    ~ZolException() override;

    ZolReturnT code() const noexcept;

private:
    const ZolReturnT _code;
};

} // namespace Zol
