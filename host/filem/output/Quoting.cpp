#include "filem/output/Quoting.h"

#include "engine/Utf8.h"
#include "filem/output/PrintableText.h"

#include <algorithm>

namespace zolhost::filem
{

namespace
{

constexpr std::string_view DIGITS = "0123456789abcdef";

bool isPlain(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') ||
           std::string_view("_@%+=:,./-").find(character) != std::string_view::npos;
}

void appendByte(std::string& result, char byte)
{
    const auto code = static_cast<unsigned char>(byte);
    result += DIGITS[code >> 4U];
    result += DIGITS[code & 0xfU];
}

std::string inSingleQuotes(std::string_view text)
{
    std::string result = "'";
    for (const char character : text)
    {
        result += character == '\'' ? std::string("'\\''") : std::string(1, character);
    }
    return result + "'";
}

std::string inDoubleQuotes(std::string_view text)
{
    std::string result = "\"";
    for (const char character : text)
    {
        const bool isSpecial = std::string_view("\"\\$`").find(character) != std::string_view::npos;
        result += isSpecial ? "\\" : "";
        result += character;
    }
    return result + "\"";
}

std::string inDollarQuotes(std::string_view text)
{
    std::string result = "$'";
    while (!text.empty())
    {
        const std::string_view before = text;
        const auto character = takeCharacter(text);
        const std::string_view bytes = before.substr(0, before.size() - text.size());
        if (character == U'\n')
        {
            result += "\\n";
        }
        else if (character == U'\t')
        {
            result += "\\t";
        }
        else if (character && std::u32string_view(U"'\\").find(*character) != std::u32string_view::npos)
        {
            result += '\\';
            result += bytes;
        }
        else if (character && printable(bytes) == bytes)
        {
            result += bytes;
        }
        else
        {
            for (const char byte : bytes)
            {
                result += "\\x";
                appendByte(result, byte);
            }
        }
    }
    return result + "'";
}

} // namespace

std::string shellQuoted(std::string_view text)
{
    return shellQuoted(text, Quotes::None);
}

std::string shellQuoted(std::string_view text, Quotes quotes)
{
    const bool isTakenAsItIs = !text.empty() && text.front() != '~' && std::ranges::all_of(text, isPlain);
    if (quotes == Quotes::None && isTakenAsItIs)
    {
        return std::string(text);
    }
    if (quotes == Quotes::Dollar || printable(text) != text)
    {
        return inDollarQuotes(text);
    }
    return quotes == Quotes::Double ? inDoubleQuotes(text) : inSingleQuotes(text);
}

std::string shellQuotedOpen(std::string_view text, Quotes quotes)
{
    std::string result = shellQuoted(text, quotes);
    if (result != text)
    {
        result.pop_back();
    }
    return result;
}

std::string shownPath(const std::string& path, const std::string& rootDirectory)
{
    const std::string below = path.substr(std::min(path.size(), rootDirectory.size() + 1));
    return below.empty() ? "/" : shellQuoted(below);
}

std::string quotedIfNeeded(const std::string& text)
{
    return printable(text) == text ? text : shellQuoted(text);
}

std::string hex(std::string_view bytes)
{
    std::string result;
    for (const char byte : bytes)
    {
        appendByte(result, byte);
    }
    return result;
}

bool isUtf8(std::string_view text)
{
    while (!text.empty())
    {
        if (!takeCharacter(text))
        {
            return false;
        }
    }
    return true;
}

} // namespace zolhost::filem
