#include "filem/PrintableText.h"

#include "engine/Utf8.h"

namespace zolhost::filem
{

namespace
{

bool isControl(char32_t character)
{
    return character < 0x20 || (character >= 0x7f && character < 0xa0);
}

void appendEscaped(std::string& result, std::string_view bytes)
{
    constexpr std::string_view DIGITS = "0123456789abcdef";
    for (const char byte : bytes)
    {
        const auto code = static_cast<unsigned char>(byte);
        result += "\\x";
        result += DIGITS[code >> 4U];
        result += DIGITS[code & 0xfU];
    }
}

} // namespace

std::string printable(std::string_view text)
{
    std::string result;
    while (!text.empty())
    {
        const std::string_view before = text;
        const auto character = takeCharacter(text);
        const std::string_view bytes = before.substr(0, before.size() - text.size());
        if (character && !isControl(*character))
        {
            result += bytes;
        }
        else
        {
            appendEscaped(result, bytes);
        }
    }
    return result;
}

std::size_t width(std::string_view printableText)
{
    std::size_t count = 0;
    for (; !printableText.empty(); ++count)
    {
        takeCharacter(printableText);
    }
    return count;
}

} // namespace zolhost::filem
