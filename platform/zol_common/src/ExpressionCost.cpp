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

constexpr std::size_t MAX_COST = 32768;
constexpr std::size_t MAX_EMPTY_STEPS = 4096;
constexpr std::size_t MAX_EMPTY_STEPS_WITH_ASSERTIONS = 256;
constexpr std::size_t MAX_JOINS = 32;
constexpr std::size_t MAX_DEPTH = 250;
constexpr std::size_t MAX_ASSERTIONS = 8;
constexpr std::size_t MAX_REPEATED_ASSERTIONS = 4;
constexpr std::size_t MAX_VARIANTS_WITH_REFERENCE = 1;

// A character that stands for itself is one.
constexpr std::size_t COST_OF_PLACE = 4;
constexpr std::size_t COST_OF_ALTERNATIVE = 20; // compiling takes the square of their number
constexpr std::size_t COST_OF_OPTION = 28;
constexpr std::size_t COST_OF_EMPTY_GROUP = 64; // compiling takes the square of their number as well
constexpr std::size_t FACTOR_OF_REPETITIONS_WITHIN = 4;

std::size_t limited(std::size_t number)
{
    return std::min(number, FAR_TOO_MUCH);
}

/// A part of the expression, written out.
struct Part
{
    std::size_t cost = 0;
    std::size_t assertions = 0;
    std::size_t joins = 0;         // where ways that take no character come together again
    std::size_t waysThrough = 1;   // that take no character, from its beginning to its end
    std::size_t steps = 0;         // on all ways from its beginning
    std::size_t waysOut = 0;       // from each place in it to its end, added up
    std::size_t allSteps = 0;      // on all ways from each place in it, added up
    bool holdsRepetitions = false; // that are counted
    bool holdsCircles = false;     // without a character on the way

    /// The place where the ways part, before the rest.
    void addBranch()
    {
        steps = limited(steps + 1);
        waysOut = limited(waysOut + waysThrough);
        allSteps = limited(allSteps + steps);
    }

    void append(const Part& other)
    {
        add(other);
        allSteps = limited(allSteps + waysOut * other.steps);
        waysOut = limited(waysOut * other.waysThrough + other.waysOut);
        steps = limited(steps + waysThrough * other.steps);
        waysThrough = limited(waysThrough * other.waysThrough);
    }

    void appendAlternative(const Part& other)
    {
        add(other);
        addJoin(other);
        waysOut = limited(waysOut + other.waysOut);
        steps = limited(steps + other.steps);
        waysThrough = limited(waysThrough + other.waysThrough);
    }

    /// Of the ways through this part with those through another one.
    void addJoin(const Part& other) { joins += waysThrough > 0 && other.waysThrough > 0 ? 1 : 0; }

private:
    void add(const Part& other)
    {
        cost = limited(cost + other.cost);
        joins = limited(joins + other.joins);
        assertions = limited(assertions + other.assertions);
        allSteps = limited(allSteps + other.allSteps);
        holdsRepetitions = holdsRepetitions || other.holdsRepetitions;
        holdsCircles = holdsCircles || other.holdsCircles;
    }
};

/// A group that isn't closed yet.
struct Group
{
    Part before{.waysThrough = 0}; // alternatives that have ended
    Part sequence;                 // of the last alternative, without its last element
    Part last;                     // element, to which a repetition belongs

    void append(const Part& element)
    {
        sequence.append(last);
        last = element;
    }

    void endAlternative()
    {
        sequence.append(last);
        before.appendAlternative(sequence);
        sequence = last = Part();
    }

    Part end()
    {
        endAlternative();
        before.addBranch();
        return before;
    }

    std::size_t cost() const { return before.cost + sequence.cost + last.cost; }
};

/// One character of the expression, or an operator.
struct Token
{
    enum class Kind
    {
        Character,
        Class, // of characters
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
            return {Token::Kind::Class};
        case '.':
            return {Token::Kind::Class};
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
        if (std::string_view("wWsS").find(character) != std::string_view::npos)
        {
            return {Token::Kind::Class};
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

/// What can be repeated without an end: from behind it the way leads to a place before it.
Part loop(Part part)
{
    part.holdsCircles = part.holdsCircles || part.waysThrough > 0;
    part.allSteps = limited(part.allSteps + part.waysOut * (1 + part.steps));
    part.waysThrough = 1;
    part.addBranch();
    return part;
}

/// Copies of which each can be left out with all behind it.
Part optional(const Part& part, std::size_t copies)
{
    Part result;
    for (; copies > 0; --copies)
    {
        Part longer = part;
        longer.append(result);
        longer.addJoin(Part());
        ++longer.waysThrough;
        longer.addBranch();
        result = longer;
    }
    return result;
}

Part repeated(const Part& part, const Token& repetition)
{
    // an endless repetition is a loop behind the copies
    const bool isEndless = repetition.most == 0;
    const std::size_t copies = isEndless ? repetition.least + 1 : std::max(repetition.least, repetition.most);
    const std::size_t options = isEndless ? 1 : copies - repetition.least;
    Part result;
    for (std::size_t count = repetition.least; count > 0 && part.steps > 0; --count)
    {
        result.append(part);
    }
    result.append(isEndless ? loop(part) : optional(part, options));
    result.cost = limited(part.cost * copies + COST_OF_OPTION * options);
    if (copies > 1 && part.holdsRepetitions && part.waysThrough > 0)
    {
        result.cost = limited(result.cost * FACTOR_OF_REPETITIONS_WITHIN);
    }
    result.holdsRepetitions = part.holdsRepetitions || copies > 1;
    return result;
}

} // namespace

ExpressionCost::ExpressionCost(const std::string& expression, int flags)
{
    std::vector<Group> groups(1);
    const auto close = [&groups] {
        Part part = groups.back().end();
        groups.pop_back();
        part.cost += part.cost == 0 ? COST_OF_EMPTY_GROUP : COST_OF_PLACE;
        groups.back().append(part);
    };
    Scanner scanner(expression, (flags & REG_EXTENDED) != 0);
    // what is too much already isn't looked at further
    while (!scanner.atEnd() && _depth <= MAX_DEPTH && groups.back().cost() <= MAX_COST)
    {
        const Token token = scanner.next();
        Group& group = groups.back();
        switch (token.kind)
        {
        case Token::Kind::Reference:
            _refersBack = true;
            group.append({.cost = COST_OF_PLACE, .steps = 1, .waysOut = 1, .allSteps = 1});
            break;
        case Token::Kind::Character:
            group.append({.cost = 1, .waysThrough = 0, .steps = 1});
            break;
        case Token::Kind::Class:
            group.append({.cost = COST_OF_PLACE, .waysThrough = 0, .steps = 1});
            break;
        case Token::Kind::Assertion:
            group.append({.cost = COST_OF_PLACE, .assertions = 1, .steps = 1, .waysOut = 1, .allSteps = 1});
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
            group.before.cost += COST_OF_ALTERNATIVE;
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
    const Part whole = groups.back().end();
    _cost = whole.cost;
    _joins = whole.joins;
    _assertions = whole.assertions;
    _emptySteps = whole.holdsCircles ? whole.allSteps : 0;
}

bool ExpressionCost::isAffordable() const
{
    return _cost <= MAX_COST &&
           _emptySteps <= (_repeatedAssertions > 0 ? MAX_EMPTY_STEPS_WITH_ASSERTIONS : MAX_EMPTY_STEPS) &&
           _joins <= MAX_JOINS && _depth <= MAX_DEPTH && _assertions <= MAX_ASSERTIONS &&
           _repeatedAssertions <= MAX_REPEATED_ASSERTIONS &&
           (!_refersBack || _variants <= MAX_VARIANTS_WITH_REFERENCE);
}

std::size_t ExpressionCost::bytesToKeep() const
{
    constexpr std::size_t MAX_BYTES = 4096;
    constexpr std::size_t COST_OF_BYTES = 1U << 23U;
    return std::min(MAX_BYTES, COST_OF_BYTES / std::max<std::size_t>(_cost, 1));
}

} // namespace Zol
