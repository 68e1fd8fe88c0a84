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
    /// Carries ZolReturnFailure; the text is formatted as printf does.
    explicit ZolException(const char* format, ...) __attribute__((format(printf, 2, 3)));
    /// Carries that code; the text is formatted as printf does.
    ZolException(ZolReturnT code, const char* format, ...) __attribute__((format(printf, 3, 4)));
    /// Copies code and text.
    ZolException(const ZolException&) = default;
    /// Copies code and text.
    ZolException& operator=(const ZolException&) = default;
    ~ZolException() override;

    /// What the host is to see.
    ZolReturnT code() const noexcept { return _code; }
    /// Why, for the log.
    const char* what() const noexcept override { return _text.c_str(); }

private:
    ZolReturnT _code;
    std::string _text;
};

} // namespace Zol
