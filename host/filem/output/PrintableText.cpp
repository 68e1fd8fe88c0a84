#include "filem/output/PrintableText.h"

#include "engine/Utf8.h"

#include <clocale>
#include <cwchar>

namespace zolhost::filem
{

namespace
{

/// What moves the cursor, turns the direction of writing or can't be seen.
bool isControl(char32_t character)
{
    const auto isIn = [=](char32_t first, char32_t last) { return character >= first && character <= last; };
    return character < 0x20 || isIn(0x7f, 0x9f) || isIn(0x200b, 0x200f) || isIn(0x2028, 0x202e) ||
           isIn(0x2060, 0x206f) || character == 0xfeff;
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
    // whatever the operator's locale is, names that are UTF-8 are shown as such
    static const locale_t utf8 = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const locale_t before = uselocale(utf8);
    std::size_t columns = 0;
    while (!printableText.empty())
    {
        const auto character = takeCharacter(printableText);
        const int wide = character ? wcwidth(static_cast<wchar_t>(*character)) : 1;
        columns += wide < 0 ? 1 : static_cast<std::size_t>(wide);
    }
    uselocale(before);
    return columns;
}

} // namespace zolhost::filem
