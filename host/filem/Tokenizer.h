#pragma once

#include "filem/output/Quoting.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zolhost::filem
{

/// A line with a quote that doesn't end or the like.
class BadLine : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

struct Token
{
    enum class Kind
    {
        Word,
        Pipe,     ///< |
        Semicolon ///< ;
    };
    Kind kind;
    std::string text; ///< of a word
    bool operator==(const Token&) const = default;
};

/// The words of a line, quoted as in a POSIX shell: '…' takes everything as it is, in "…" a backslash quotes
/// `"`,
/// `\`, `$` and a backquote, elsewhere it quotes any character. In $'…' stand \n, \t, \r, \\, \' and \x with
/// two digits. A # at the beginning of a word makes the rest a comment. Nothing is expanded. Throws BadLine.
std::vector<Token> tokenize(std::string_view line);

/// A line of which more is to be typed.
struct BegunLine
{
    std::vector<Token> tokens;    ///< before the word that is being typed
    std::string word;             ///< so far; empty if it hasn't begun
    std::size_t start = 0;        ///< where it begins in the line
    Quotes quotes = Quotes::None; ///< that are open
};
/// Nothing if what comes next is no part of a word: in a comment, or after a backslash. Throws BadLine.
std::optional<BegunLine> tokenizeBegun(std::string_view line);

} // namespace zolhost::filem
