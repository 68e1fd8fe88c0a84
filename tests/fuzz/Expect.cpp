#include "Expect.h"

#include <cstdio>
#include <cstdlib>

namespace zolfuzz
{

namespace
{

[[noreturn]] void fail(const std::string& text)
{
    std::fprintf(stderr, "\n%s\n", text.c_str());
    std::abort();
}

} // namespace

std::string shown(std::string_view text)
{
    constexpr std::string_view DIGITS = "0123456789abcdef";
    std::string result = "\"";
    for (const char character : text)
    {
        const auto code = static_cast<unsigned char>(character);
        if (code >= 0x20 && code < 0x7f && character != '"')
        {
            result += character;
            continue;
        }
        result += "\\x";
        result += DIGITS[code / 16];
        result += DIGITS[code % 16];
    }
    return result + '"';
}

void expectSame(std::string_view found, std::string_view expected, std::string_view what,
                std::string_view input)
{
    if (found != expected)
    {
        fail(std::string(what) + " of " + shown(input) + "\n  is        " + shown(found) + "\n  should be " +
             shown(expected));
    }
}

void expectSame(long long found, long long expected, std::string_view what, std::string_view input)
{
    expectSame(std::to_string(found), std::to_string(expected), what, input);
}

void expect(bool condition, std::string_view what, std::string_view input)
{
    if (!condition)
    {
        fail(std::string(what) + ": " + shown(input));
    }
}

} // namespace zolfuzz
