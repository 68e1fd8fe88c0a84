#include "ExpressionCost.h"

#include <algorithm>
#include <cctype>
#include <regex.h>
#include <string_view>
#include <vector>

namespace Zol
{

namespace
{

// More than any expression that is affordable has, and small enough to be multiplied.
constexpr std::size_t FAR_TOO_MUCH = 1U << 20U;

constexpr std::size_t MAX_PLACES = 8192;
constexpr std::size_t MAX_DEPTH = 250;
constexpr std::size_t MAX_REPEATED_ASSERTIONS = 4;
constexpr std::size_t MAX_VARIANTS_WITH_REFERENCE = 1;

constexpr std::size_t COST_OF_ALTERNATIVE = 3;
constexpr std::size_t COST_OF_OPTION = 7;
constexpr std::size_t COST_OF_REPETITIONS_WITHIN = 4;

std::size_t limited(std::size_t number)
{
    return std::min(number, FAR_TOO_MUCH);
}

/// A part of the expression, written out.
struct Part
{
    std::size_t places = 0;
    std::size_t assertions = 0;
    bool canBeEmpty = true;
    bool holdsRepetitions = false; // that are counted

    void append(const Part& other)
    {
        places = limited(places + other.places);
        assertions = limited(assertions + other.assertions);
        canBeEmpty = canBeEmpty && other.canBeEmpty;
        holdsRepetitions = holdsRepetitions || other.holdsRepetitions;
    }
};

/// A group that isn't closed yet.
struct Group
{
    Part before{.canBeEmpty = false}; // alternatives that have ended
    Part sequence;                    // of the last alternative, without its last element
    Part last;                        // element, to which a repetition belongs

    void append(const Part& element)
    {
        sequence.append(last);
        last = element;
    }

    void endAlternative()
    {
        sequence.append(last);
        const bool canBeEmpty = sequence.canBeEmpty || before.canBeEmpty;
        before.append(sequence);
        before.canBeEmpty = canBeEmpty;
        sequence = last = Part();
    }
};

/// One character of the expression, or an operator.
struct Token
{
    enum class Kind
    {
        Character,
        Assertion,
        Reference,
        Open,
        Close,
        Alternative,
        Repetition
    };
    Kind kind;
    std::size_t least = 0; // of a repetition
    std::size_t most = 0;  // 0: there is no end
};

class Scanner
{
public:
    Scanner(std::string_view expression, bool isExtended)
        : _rest(expression)
        , _isExtended(isExtended)
    {}

    bool atEnd() const { return _rest.empty(); }

    Token next()
    {
        const char character = take();
        switch (character)
        {
        case '\\':
            return atEnd() ? Token{Token::Kind::Character} : escaped(take());
        case '[':
            skipBrackets();
            return {Token::Kind::Character};
        case '^':
        case '$':
            return {Token::Kind::Assertion};
        case '*':
            return {Token::Kind::Repetition, 0, 0};
        default:
            return _isExtended ? special(character) : Token{Token::Kind::Character};
        }
    }

private:
    char take()
    {
        const char character = _rest.front();
        _rest.remove_prefix(1);
        return character;
    }

    Token escaped(char character)
    {
        if (std::isdigit(static_cast<unsigned char>(character)) != 0)
        {
            return {Token::Kind::Reference};
        }
        if (std::string_view("bB<>`'").find(character) != std::string_view::npos)
        {
            return {Token::Kind::Assertion};
        }
        return _isExtended ? Token{Token::Kind::Character} : special(character);
    }

    Token special(char character)
    {
        switch (character)
        {
        case '(':
            return {Token::Kind::Open};
        case ')':
            return {Token::Kind::Close};
        case '|':
            return {Token::Kind::Alternative};
        case '+':
            return {Token::Kind::Repetition, 1, 0};
        case '?':
            return {Token::Kind::Repetition, 0, 1};
        case '{':
            return interval();
        default:
            return {Token::Kind::Character};
        }
    }

    std::size_t number()
    {
        std::size_t value = 0;
        while (!atEnd() && std::isdigit(static_cast<unsigned char>(_rest.front())) != 0)
        {
            value = limited(value * 10 + static_cast<std::size_t>(take() - '0'));
        }
        return value;
    }

    /// One that isn't closed is a repetition too: whether the system takes it for one doesn't matter. {0}
    /// counts as much as {0,}.
    Token interval()
    {
        const std::size_t least = number();
        const std::size_t most = skip(",") ? number() : least;
        skip(_isExtended ? "}" : "\\}");
        return {Token::Kind::Repetition, least, most};
    }

    void skipBrackets()
    {
        skip("^");
        skip("]"); // a character if it comes first
        while (!atEnd() && !skip("]"))
        {
            if (take() == '[' && _rest.substr(0, 1).find_first_of(".:=") == 0)
            {
                const std::string end = {take(), ']'};
                _rest.remove_prefix(std::min(_rest.find(end), _rest.size()));
                skip(end);
            }
        }
    }

    bool skip(std::string_view text)
    {
        const bool isNext = _rest.starts_with(text);
        _rest.remove_prefix(isNext ? text.size() : 0);
        return isNext;
    }

    std::string_view _rest;
    bool _isExtended;
};

Part repeated(const Part& part, const Token& repetition)
{
    // the last one of an endless repetition is a loop
    const auto copies = std::max<std::size_t>({repetition.least, repetition.most, 1});
    const std::size_t options = repetition.most == 0 ? 1 : copies - repetition.least;
    Part result = part;
    result.places = limited(part.places * copies + COST_OF_OPTION * options);
    result.assertions = limited(part.assertions * copies);
    if (copies > 1 && part.holdsRepetitions && part.canBeEmpty)
    {
        result.places = limited(result.places * COST_OF_REPETITIONS_WITHIN);
    }
    result.holdsRepetitions = part.holdsRepetitions || copies > 1;
    result.canBeEmpty = part.canBeEmpty || repetition.least == 0;
    return result;
}

} // namespace

ExpressionCost::ExpressionCost(const std::string& expression, int flags)
{
    std::vector<Group> groups(1);
    const auto close = [&groups] {
        Group group = groups.back();
        group.endAlternative();
        groups.pop_back();
        ++group.before.places;
        groups.back().append(group.before);
    };
    Scanner scanner(expression, (flags & REG_EXTENDED) != 0);
    // of groups that are too deep already there is no need to keep more
    while (!scanner.atEnd() && _depth <= MAX_DEPTH)
    {
        const Token token = scanner.next();
        Group& group = groups.back();
        switch (token.kind)
        {
        case Token::Kind::Reference:
            _refersBack = true;
            [[fallthrough]];
        case Token::Kind::Character:
            group.append({1, 0, token.kind == Token::Kind::Reference, false});
            break;
        case Token::Kind::Assertion:
            group.append({1, 1, true, false});
            break;
        case Token::Kind::Open:
            groups.emplace_back();
            _depth = std::max(_depth, groups.size() - 1);
            break;
        case Token::Kind::Close:
            if (groups.size() > 1)
            {
                close();
            }
            break;
        case Token::Kind::Alternative:
            ++_variants;
            group.endAlternative();
            group.before.places += COST_OF_ALTERNATIVE;
            break;
        case Token::Kind::Repetition:
            _variants += token.most == 0 || token.least != token.most ? 1 : 0;
            group.last = repeated(group.last, token);
            if (token.most != 1)
            {
                _repeatedAssertions = std::max(_repeatedAssertions, group.last.assertions);
            }
            break;
        }
    }
    while (groups.size() > 1)
    {
        close();
    }
    groups.back().endAlternative();
    _places = groups.back().before.places;
}

bool ExpressionCost::isAffordable() const
{
    return _places <= MAX_PLACES && _depth <= MAX_DEPTH && _repeatedAssertions <= MAX_REPEATED_ASSERTIONS &&
           (!_refersBack || _variants <= MAX_VARIANTS_WITH_REFERENCE);
}

std::size_t ExpressionCost::bytesToKeep() const
{
    constexpr std::size_t MAX_BYTES = 4096;
    constexpr std::size_t PLACES_OF_BYTES = 1U << 21U;
    return std::min(MAX_BYTES, PLACES_OF_BYTES / std::max<std::size_t>(_places, 1));
}

} // namespace Zol
