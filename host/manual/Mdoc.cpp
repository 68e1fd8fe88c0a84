#include "manual/Mdoc.h"

#include <algorithm>
#include <cctype>
#include <ostream>
#include <sstream>

namespace zolhost::manual
{

namespace
{

// when the pages were last written anew, which mdoc wants to know
constexpr std::string_view DATE = "November 21, 2026";

std::string withoutEscapes(std::string_view text)
{
    std::string result;
    for (const char character : text)
    {
        if (character == '\\')
        {
            result += "\\e";
        }
        else
        {
            result += character;
        }
    }
    return result;
}

/// As a line of text, which a dot or an apostrophe would turn into a request.
std::string textLine(std::string_view line)
{
    const bool isRequest = line.starts_with('.') || line.starts_with('\'');
    return (isRequest ? "\\&" : "") + withoutEscapes(line);
}

/// Nothing in it can be taken for a macro, a delimiter or an escape.
bool isPlain(std::string_view text)
{
    const auto isIn = [](std::string_view characters, char wanted) {
        return characters.find(wanted) != std::string_view::npos;
    };
    constexpr std::string_view LETTERS = "abcdefghijklmnopqrstuvwxyz0123456789-";
    constexpr std::string_view CAPITALS = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    return !text.empty() &&
           (std::ranges::all_of(text, [&](char character) { return isIn(LETTERS, character); }) ||
            std::ranges::all_of(text, [&](char character) { return isIn(CAPITALS, character); }));
}

} // namespace

Mdoc::Mdoc(std::ostream& out, std::string_view title, int section)
    : _out(out)
{
    std::string capitals(title);
    std::ranges::transform(capitals, capitals.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::toupper(letter)); });
    macro("Dd " + std::string(DATE));
    macro("Dt " + capitals + " " + std::to_string(section));
    macro("Os");
}

void Mdoc::macro(std::string_view line)
{
    _out << '.' << line << '\n';
}

void Mdoc::text(std::string_view prose)
{
    constexpr std::size_t LONGEST = 78;
    std::istringstream words{std::string(prose)};
    std::string line;
    for (std::string word; words >> word;)
    {
        const bool isNewSentence = line.ends_with('.') || line.ends_with('?');
        if (!line.empty() && (isNewSentence || line.size() + 1 + word.size() > LONGEST))
        {
            _out << textLine(line) << '\n';
            line.clear();
        }
        line += (line.empty() ? "" : " ") + word;
    }
    if (!line.empty())
    {
        _out << textLine(line) << '\n';
    }
}

void Mdoc::verbatim(std::string_view lines)
{
    macro("Bd -literal -offset indent");
    std::istringstream stream{std::string(lines)};
    for (std::string line; std::getline(stream, line);)
    {
        _out << textLine(line) << '\n';
    }
    macro("Ed");
}

void Mdoc::reference(std::string_view page, int section, std::string_view punctuation)
{
    macro("Sy " + std::string(page) + " Ns " + argument("(" + std::to_string(section) + ")") +
          (punctuation.empty() ? "" : " ") + std::string(punctuation));
}

std::string Mdoc::argument(std::string_view text)
{
    if (isPlain(text))
    {
        return std::string(text);
    }
    std::string escaped;
    for (const char character : withoutEscapes(text))
    {
        escaped += character == '"' ? "\\(dq" : std::string(1, character);
    }
    // the zero-width characters keep what is at the ends from being taken for a macro or a delimiter
    return "\"\\&" + escaped + "\\&\"";
}

} // namespace zolhost::manual
