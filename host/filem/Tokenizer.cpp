#include "filem/Tokenizer.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace zolhost::filem
{

namespace
{

constexpr std::string_view BLANKS = " \t\r";

/// Reads one line from left to right.
class Line
{
public:
    explicit Line(std::string_view text)
        : _rest(text)
    {}

    /// Nothing at the end of the line or before a comment.
    std::optional<std::string> word()
    {
        _rest.remove_prefix(std::min(_rest.find_first_not_of(BLANKS), _rest.size()));
        if (_rest.empty() || _rest.front() == '#')
        {
            return std::nullopt;
        }
        std::string word;
        while (!_rest.empty() && BLANKS.find(_rest.front()) == std::string_view::npos)
        {
            switch (const char character = take())
            {
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
        return word;
    }

private:
    char take()
    {
        const char character = _rest.front();
        _rest.remove_prefix(1);
        return character;
    }

    char quotedCharacter()
    {
        if (_rest.empty())
        {
            throw BadLine("a backslash at the end of a line quotes nothing");
        }
        return take();
    }

    std::string untilSingleQuote()
    {
        const auto end = _rest.find('\'');
        if (end == std::string_view::npos)
        {
            throw BadLine("a single quote has no end");
        }
        std::string text(_rest.substr(0, end));
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
        throw BadLine("a double quote has no end");
    }

    std::string_view _rest;
};

} // namespace

std::vector<std::string> tokenize(std::string_view line)
{
    if (line.find('\0') != std::string_view::npos)
    {
        throw BadLine("a line must not hold a zero byte");
    }
    std::vector<std::string> words;
    Line reader(line);
    while (auto word = reader.word())
    {
        words.push_back(std::move(*word));
    }
    return words;
}

} // namespace zolhost::filem
