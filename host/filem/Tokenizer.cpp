#include "filem/Tokenizer.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <system_error>
#include <utility>

namespace zolhost::filem
{

namespace
{

constexpr std::string_view BLANKS = " \t\r";
constexpr std::string_view ENDS = " \t\r|;";

/// Reads one line from left to right.
class Line
{
public:
    explicit Line(std::string_view text)
        : _rest(text)
    {}

    /// What isn't finished is no failure then.
    void expectMore() { _expectsMore = true; }

    /// Quotes, or a backslash, that the line ended in.
    bool isQuotedCharacterMissing() const { return _isQuotedCharacterMissing; }
    Quotes openQuotes() const { return _openQuotes; }
    /// What isn't read yet.
    std::string_view rest() const { return _rest; }

    void skipBlanks() { _rest.remove_prefix(std::min(_rest.find_first_not_of(BLANKS), _rest.size())); }

    /// Nothing at the end of the line or before a comment.
    std::optional<Token> token()
    {
        skipBlanks();
        if (_rest.empty() || _rest.front() == '#')
        {
            return std::nullopt;
        }
        if (_rest.front() == '|' || _rest.front() == ';')
        {
            return Token{take() == '|' ? Token::Kind::Pipe : Token::Kind::Semicolon, {}};
        }
        std::string word;
        while (!_rest.empty() && ENDS.find(_rest.front()) == std::string_view::npos)
        {
            switch (const char character = take())
            {
            case '$':
                word += dollar();
                break;
            case '\'':
                word += untilSingleQuote();
                break;
            case '"':
                word += untilDoubleQuote();
                break;
            case '\\':
                word += quotedCharacter();
                break;
            default:
                word += character;
            }
        }
        return Token{Token::Kind::Word, std::move(word)};
    }

private:
    char take()
    {
        const char character = _rest.front();
        _rest.remove_prefix(1);
        return character;
    }

    void leaveOpen(Quotes quotes, const char* failure)
    {
        if (!_expectsMore)
        {
            throw BadLine(failure);
        }
        _openQuotes = quotes;
        _rest = {};
    }

    char quotedCharacter()
    {
        if (!_rest.empty())
        {
            return take();
        }
        if (!_expectsMore)
        {
            throw BadLine("a backslash at the end of a line quotes nothing");
        }
        _isQuotedCharacterMissing = true;
        return '\\';
    }

    std::string untilSingleQuote()
    {
        const auto end = _rest.find('\'');
        std::string text(_rest.substr(0, end));
        if (end == std::string_view::npos)
        {
            leaveOpen(Quotes::Single, "a single quote has no end");
            return text;
        }
        _rest.remove_prefix(end + 1);
        return text;
    }

    std::string untilDoubleQuote()
    {
        constexpr std::string_view QUOTABLE = "\"\\$`";
        std::string text;
        while (!_rest.empty())
        {
            const char character = take();
            if (character == '"')
            {
                return text;
            }
            const bool quotes =
                character == '\\' && !_rest.empty() && QUOTABLE.find(_rest.front()) != std::string_view::npos;
            text += quotes ? take() : character;
        }
        leaveOpen(Quotes::Double, "a double quote has no end");
        return text;
    }

    std::string dollar()
    {
        if (_rest.empty() || _rest.front() != '\'')
        {
            return "$";
        }
        take();
        std::string text;
        while (!_rest.empty())
        {
            const char character = take();
            if (character == '\'')
            {
                return text;
            }
            text += character == '\\' ? escapedCharacter() : character;
        }
        leaveOpen(Quotes::Dollar, "a single quote has no end");
        return text;
    }

    char escapedCharacter()
    {
        switch (const char character = quotedCharacter())
        {
        case 'n':
            return '\n';
        case 't':
            return '\t';
        case 'r':
            return '\r';
        case 'x':
            return byteOfTwoDigits();
        case '\\':
        case '\'':
        case '"':
            return character;
        default:
            throw BadLine(std::string("there is no \\") + character + " in $'…'");
        }
    }

    char byteOfTwoDigits()
    {
        const std::string_view digits = _rest.substr(0, 2);
        unsigned int byte = 0;
        const auto [end, error] = std::from_chars(digits.begin(), digits.end(), byte, 16);
        if (error != std::errc() || end != digits.end() || digits.size() != 2 || byte == 0)
        {
            throw BadLine("\\x takes two hexadecimal digits, not both 0");
        }
        _rest.remove_prefix(2);
        return static_cast<char>(byte);
    }

    std::string_view _rest;
    bool _expectsMore = false;
    bool _isQuotedCharacterMissing = false;
    Quotes _openQuotes = Quotes::None;
};

} // namespace

std::vector<Token> tokenize(std::string_view line)
{
    if (line.find('\0') != std::string_view::npos)
    {
        throw BadLine("a line must not hold a zero byte");
    }
    std::vector<Token> tokens;
    Line reader(line);
    while (auto token = reader.token())
    {
        tokens.push_back(std::move(*token));
    }
    return tokens;
}

std::optional<BegunLine> tokenizeBegun(std::string_view line)
{
    BegunLine begun;
    Line reader(line);
    reader.expectMore();
    while (true)
    {
        reader.skipBlanks();
        begun.start = line.size() - reader.rest().size();
        auto token = reader.token();
        if (!token)
        {
            // at a comment, or at the end
            return reader.rest().empty() ? std::optional(begun) : std::nullopt;
        }
        if (token->kind == Token::Kind::Word && reader.rest().empty())
        {
            begun.word = std::move(token->text);
            begun.quotes = reader.openQuotes();
            return reader.isQuotedCharacterMissing() ? std::nullopt : std::optional(begun);
        }
        begun.tokens.push_back(std::move(*token));
    }
}

} // namespace zolhost::filem
