#include "FormatText.h"

#include <array>
#include <cstdio>

namespace Zol
{

std::string formatText(const char* format, std::va_list arguments)
{
    std::array<char, 512> usual;
    std::va_list once;
    va_copy(once, arguments);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): va_copy has begun it
    const int length = std::vsnprintf(usual.data(), usual.size(), format, once);
    va_end(once);

    std::string text;
    if (length < 0)
    {
        // an argument that can't be converted; its format still tells which text it was
        text = format;
    }
    else if (static_cast<std::size_t>(length) < usual.size())
    {
        text.assign(usual.data(), static_cast<std::size_t>(length));
    }
    else
    {
        text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(text.data(), text.size() + 1, format, arguments);
    }
    return text;
}

} // namespace Zol
