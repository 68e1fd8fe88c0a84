#pragma once

#include <string>
#include <string_view>

namespace zolhost::filem
{

/// The text as a shell and filem itself read it back: as it is if it holds nothing special, else in single
/// quotes, or as $'…' if it holds control characters or what is no UTF-8. Nothing that a terminal obeys is
/// left.
std::string shellQuoted(std::string_view text);

enum class Quotes
{
    None,
    Single, ///< '…'
    Double, ///< "…"
    Dollar  ///< $'…'
};

/// The same in the quotes that are asked for, or in $'…' if the text needs them; without, as above.
std::string shellQuoted(std::string_view text, Quotes quotes);

/// The beginning of a word as it is while more of it is to be typed: its quotes stay open.
std::string shellQuotedOpen(std::string_view text, Quotes quotes);

/// A path on disk as it is below the root directory, quoted for a shell; of the root itself "/".
std::string shownPath(const std::string& path, const std::string& rootDirectory);

/// For a text that is mostly read, such as a DN: quoted only if it holds what may not reach a terminal.
std::string quotedIfNeeded(const std::string& text);

/// Each byte as two digits.
std::string hex(std::string_view bytes);

bool isUtf8(std::string_view text);

} // namespace zolhost::filem
