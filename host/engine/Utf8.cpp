#include "engine/Utf8.h"

#include <cstddef>

namespace zolhost
{

namespace
{

struct Form
{
    std::size_t length;
    char32_t smallest;
    unsigned char mask;
    unsigned char lead;
};

constexpr Form FORMS[] = {
    {1, 0, 0x80, 0x00}, {2, 0x80, 0xe0, 0xc0}, {3, 0x800, 0xf0, 0xe0}, {4, 0x10000, 0xf8, 0xf0}};

bool isCharacter(char32_t code)
{
    const bool isSurrogate = code >= 0xd800 && code <= 0xdfff;
    return code <= 0x10ffff && !isSurrogate;
}

std::optional<char32_t> decode(std::string_view text, const Form& form)
{
    if (text.size() < form.length)
    {
        return std::nullopt;
    }
    char32_t code = static_cast<unsigned char>(text.front()) & static_cast<unsigned char>(~form.mask);
    for (const char following : text.substr(1, form.length - 1))
    {
        const auto byte = static_cast<unsigned char>(following);
        if ((byte & 0xc0U) != 0x80U)
        {
            return std::nullopt;
        }
        code = (code << 6U) | (byte & 0x3fU);
    }
    return code >= form.smallest && isCharacter(code) ? std::optional(code) : std::nullopt;
}

} // namespace

std::optional<char32_t> takeCharacter(std::string_view& text)
{
    const auto first = static_cast<unsigned char>(text.front());
    for (const auto& form : FORMS)
    {
        if ((first & form.mask) == form.lead)
        {
            const auto character = decode(text, form);
            text.remove_prefix(character ? form.length : 1);
            return character;
        }
    }
    text.remove_prefix(1);
    return std::nullopt;
}

} // namespace zolhost
