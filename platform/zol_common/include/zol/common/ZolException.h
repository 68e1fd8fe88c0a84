#pragma once

#include <exception>
#include <string>
#include <zol/spi/ZolReturnT.h>

namespace Zol
{

/// A failure with the code that the host is to see.
class ZolException : public std::exception
{
public:
    /// Carries ZolReturnFailure.
    explicit ZolException(const char* format, ...) __attribute__((format(printf, 2, 3)));
    ZolException(ZolReturnT code, const char* format, ...) __attribute__((format(printf, 3, 4)));
    ZolException(const ZolException&) = default;
    ZolException& operator=(const ZolException&) = default;
    ~ZolException() override;

    ZolReturnT code() const noexcept { return _code; }
    const char* what() const noexcept override { return _text.c_str(); }

private:
    ZolReturnT _code;
    std::string _text;
};

} // namespace Zol
