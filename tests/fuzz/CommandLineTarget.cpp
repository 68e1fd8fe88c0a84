#include "Expect.h"
#include "Input.h"
#include "filem/ExitCode.h"
#include "filem/Interpreter.h"
#include "filem/Tokenizer.h"
#include "filem/output/Quoting.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

using namespace zolfuzz;
using namespace zolhost::filem;

namespace
{

/// The words of a line behind each other, each with a mark in front and the operators between them.
using Parsed = std::optional<std::string>;

constexpr char WORD = '\x01'; // in front of each

bool isBlank(char character)
{
    return character == ' ' || character == '\t' || character == '\r';
}

int digit(char character)
{
    const std::string_view digits = "0123456789abcdef";
    const auto found =
        digits.find(character >= 'A' && character <= 'F' ? static_cast<char>(character + 32) : character);
    return found == std::string_view::npos ? -1 : static_cast<int>(found);
}

/// One state for each kind of place in a line.
class Automaton
{
public:
    Parsed parse(const std::string& line)
    {
        for (_at = line.begin(), _end = line.end(); _at != _end && !_isBad && !_isComment; ++_at)
        {
            step(*_at);
        }
        if (_isBad || _place != Place::Between || _escapes)
        {
            return std::nullopt;
        }
        return _result;
    }

private:
    enum class Place
    {
        Between, // or in a word, outside of quotes
        Single,
        Double,
        Dollar
    };

    void add(char character)
    {
        begin();
        _result += character;
    }

    void begin()
    {
        if (!_isInWord)
        {
            _result += WORD;
        }
        _isInWord = true;
    }

    void step(char character)
    {
        _isBad = _isBad || character == '\0';
        if (_escapes)
        {
            _escapes = false;
            return escaped(character);
        }
        switch (_place)
        {
        case Place::Between:
            return between(character);
        case Place::Single:
            return character == '\'' ? leave() : add(character);
        case Place::Double:
        case Place::Dollar:
            if (character == (_place == Place::Double ? '"' : '\''))
            {
                return leave();
            }
            if (character == '\\')
            {
                _escapes = true;
                return;
            }
            return add(character);
        }
    }

    void leave() { _place = Place::Between; }

    void between(char character)
    {
        if (isBlank(character) || character == '|' || character == ';')
        {
            _isInWord = false;
            _result += isBlank(character) ? "" : std::string(1, character == '|' ? '\x02' : '\x03');
        }
        else if (character == '#' && !_isInWord)
        {
            _isComment = true;
        }
        else if (character == '\\')
        {
            begin();
            _escapes = true;
        }
        else if (character == '\'' || character == '"')
        {
            begin();
            _place = character == '"' ? Place::Double : Place::Single;
        }
        else if (character == '$' && _at + 1 != _end && _at[1] == '\'')
        {
            begin();
            ++_at;
            _place = Place::Dollar;
        }
        else
        {
            add(character);
        }
    }

    void escaped(char character)
    {
        if (_place == Place::Between)
        {
            return add(character);
        }
        if (_place == Place::Double)
        {
            if (std::string_view("\"\\$`").find(character) == std::string_view::npos)
            {
                _result += '\\';
            }
            return add(character);
        }
        const std::string_view letters = "ntr\\'\"";
        const auto letter = letters.find(character);
        if (letter != std::string_view::npos)
        {
            return add("\n\t\r\\'\""[letter]);
        }
        const bool hasDigits = character == 'x' && _end - _at > 2 && digit(_at[1]) >= 0 && digit(_at[2]) >= 0;
        if (!hasDigits || digit(_at[1]) + digit(_at[2]) == 0)
        {
            _isBad = true;
            return;
        }
        add(static_cast<char>(16 * digit(_at[1]) + digit(_at[2])));
        _at += 2;
    }

    std::string _result;
    std::string::const_iterator _at;
    std::string::const_iterator _end;
    Place _place = Place::Between;
    bool _escapes = false;
    bool _isInWord = false;
    bool _isComment = false;
    bool _isBad = false;
};

Parsed tokensOf(const std::string& line)
{
    try
    {
        std::string result;
        for (const auto& [kind, text] : tokenize(line))
        {
            result += kind == Token::Kind::Word ? WORD + text : kind == Token::Kind::Pipe ? "\x02" : "\x03";
        }
        return result;
    }
    catch (const BadLine&)
    {
        return std::nullopt;
    }
}

/// Nothing is on one side of a bar: at the ends of a command or beside another bar.
bool hasEmptyFilter(const std::vector<Token>& tokens)
{
    for (std::size_t i = 0; i < tokens.size(); ++i)
    {
        const bool isPipe = tokens[i].kind == Token::Kind::Pipe;
        const bool isFirst = i == 0 || tokens[i - 1].kind != Token::Kind::Word;
        const bool isLast = i + 1 == tokens.size() || tokens[i + 1].kind != Token::Kind::Word;
        if (isPipe && (isFirst || isLast))
        {
            return true;
        }
    }
    return false;
}

void expectPipelines(const std::string& line)
{
    const auto tokens = tokenize(line);
    std::string found;
    try
    {
        for (const auto& pipeline : parseLine(line))
        {
            expect(!pipeline.command.empty(), "a command without words", line);
            for (const auto& word : pipeline.command)
            {
                found += WORD + word;
            }
            for (const auto& filter : pipeline.filters)
            {
                expect(!filter.empty(), "a filter without words", line);
                found += '\x02';
                for (const auto& word : filter)
                {
                    found += WORD + word;
                }
            }
            found += '\x03';
        }
    }
    catch (const CommandFailure& failure)
    {
        expect(failure.code() == ExitCode::Usage, "an odd code", line);
        expect(hasEmptyFilter(tokens), "is refused", line);
        return;
    }
    expect(!hasEmptyFilter(tokens), "is accepted", line);
    std::string expected;
    bool isBehindWord = false;
    for (const auto& token : tokens)
    {
        const bool isSemicolon = token.kind == Token::Kind::Semicolon;
        expected += token.kind == Token::Kind::Word ? WORD + token.text : !isSemicolon ? "\x02" : "";
        expected += isSemicolon && isBehindWord ? "\x03" : "";
        isBehindWord = token.kind == Token::Kind::Word;
    }
    expectSame(found, expected + (isBehindWord ? "\x03" : ""), "the commands", line);
}

void expectBegun(const std::string& line)
{
    std::optional<BegunLine> begun;
    try
    {
        begun = tokenizeBegun(line);
    }
    catch (const BadLine&)
    {
        expect(!tokensOf(line).has_value(), "can be read whole, but not as begun", line);
        return;
    }
    if (!begun || line.ends_with('\\')) // which would quote what closes
    {
        return;
    }
    expect(begun->start <= line.size(), "begins behind the end", line);
    const std::string closing = begun->quotes == Quotes::None     ? ""
                                : begun->quotes == Quotes::Double ? "\""
                                                                  : "'";
    const auto whole = tokensOf(line + closing);
    expect(whole.has_value(), "can't be read when its quotes are closed", line);
    std::string found;
    for (const auto& [kind, text] : begun->tokens)
    {
        found += kind == Token::Kind::Word ? WORD + text : kind == Token::Kind::Pipe ? "\x02" : "\x03";
    }
    const bool isWord = begun->start < line.size();
    expectSame(found + (isWord ? WORD + begun->word : std::string()), *whole, "what has begun", line);
}

} // namespace

// A line of a script or the prompt, and a word that is shown so that it can be typed back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string line = Input(data, size).rest();
    const Parsed tokens = tokensOf(line);
    const Parsed expected = line.find('\0') == std::string::npos ? Automaton().parse(line) : std::nullopt;
    expectSame(tokens.value_or("refused"), expected.value_or("refused"), "the words", line);
    if (tokens)
    {
        expectPipelines(line);
    }
    if (line.find('\0') == std::string::npos)
    {
        expectBegun(line);
        expectSame(tokensOf(shellQuoted(line)).value_or("refused"), WORD + line, "what is typed back", line);
        for (const Quotes quotes : {Quotes::Single, Quotes::Double, Quotes::Dollar})
        {
            expectSame(tokensOf(shellQuoted(line, quotes)).value_or("refused"), WORD + line,
                       "what is typed back in quotes", line);
        }
        const std::string quoted = shellQuoted(line);
        const bool hasControls =
            std::any_of(quoted.begin(), quoted.end(), [](unsigned char c) { return c < 0x20 || c == 0x7f; });
        expect(!hasControls, "is shown with control characters", line);
    }
    return 0;
}
