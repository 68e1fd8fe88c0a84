#include "FormatText.h"

#include <zol/common/ZolException.h>

namespace Zol
{

ZolException::ZolException(const char* format, ...)
    : _code(ZolReturnFailure)
{
    std::va_list arguments;
    va_start(arguments, format);
    _text = formatText(format, arguments);
    va_end(arguments);
}

ZolException::ZolException(ZolReturnT code, const char* format, ...)
    : _code(code)
{
    std::va_list arguments;
    va_start(arguments, format);
    _text = formatText(format, arguments);
    va_end(arguments);
}

ZolException::~ZolException() = default;

} // namespace Zol
