#pragma once

#include <optional>
#include <string_view>

namespace zolhost
{

/// Takes one character of UTF-8 off the front of a text that isn't empty. Nothing, and one byte off, if there
/// is none: names are bytes and need not be UTF-8.
std::optional<char32_t> takeCharacter(std::string_view& text);

} // namespace zolhost
