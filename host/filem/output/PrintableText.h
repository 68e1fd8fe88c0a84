#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zolhost::filem
{

/// The text as it may reach a terminal: each byte that a terminal might obey or that is no UTF-8 becomes
/// `\x` and two digits, so that every text stays on one line.
std::string printable(std::string_view text);

/// How many columns of a terminal a printable text takes.
std::size_t width(std::string_view printableText);

} // namespace zolhost::filem
