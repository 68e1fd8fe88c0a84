#include "Expect.h"
#include "Input.h"
#include "MemoryWatch.h"
#include "staging/Expression.h"

#include <algorithm>
#include <memory>
#include <regex.h>
#include <set>
#include <vector>
#include <zol/common/RegularExpression.h>

using namespace zolfuzz;

namespace
{

constexpr int FLAGS = REG_EXTENDED | REG_NOSUB;
constexpr std::size_t MAX_MEMORY = 64U << 20U;

using Positions = std::set<std::size_t>;

/// A regular expression as a tree, which finds by trying where its matches end.
struct Expression
{
    enum class Kind
    {
        OneOf, ///< the characters
        Sequence,
        Alternatives,
        Repetition
    };
    Kind kind = Kind::Sequence;
    std::string text;       ///< as it is written
    std::string characters; ///< of OneOf
    std::vector<Expression> parts;
    std::size_t least = 0;
    std::size_t most = 0;
    std::size_t nested = 0; ///< repetitions in each other

    Positions endsFrom(const std::string& subject, const Positions& starts) const
    {
        Positions ends;
        switch (kind)
        {
        case Kind::OneOf:
            for (const auto start : starts)
            {
                if (start < subject.size() && characters.find(subject[start]) != std::string::npos)
                {
                    ends.insert(start + 1);
                }
            }
            return ends;
        case Kind::Sequence:
            ends = starts;
            for (const auto& part : parts)
            {
                ends = part.endsFrom(subject, ends);
            }
            return ends;
        case Kind::Alternatives:
            for (const auto& part : parts)
            {
                ends.merge(part.endsFrom(subject, starts));
            }
            return ends;
        case Kind::Repetition:
            return endsOfRepetition(subject, starts);
        }
        return ends;
    }

    void add(Expression part)
    {
        nested = std::max(nested, part.nested);
        parts.push_back(std::move(part));
    }

    bool matchesWhole(const std::string& subject) const
    {
        return endsFrom(subject, {0}).count(subject.size()) != 0;
    }

private:
    Positions endsOfRepetition(const std::string& subject, const Positions& starts) const
    {
        Positions current = starts;
        Positions ends = least == 0 ? starts : Positions();
        for (std::size_t count = 1; count <= std::min(most, subject.size() + least + 1); ++count)
        {
            current = parts.front().endsFrom(subject, current);
            if (count >= least)
            {
                ends.insert(current.begin(), current.end());
            }
        }
        return ends;
    }
};

constexpr std::size_t ENDLESS = 1000;

class Generator
{
public:
    explicit Generator(Input& input)
        : _input(input)
    {}

    Expression alternatives(int depth)
    {
        Expression result;
        result.kind = Expression::Kind::Alternatives;
        for (unsigned int count = 1 + _input.below(2); count > 0; --count)
        {
            result.add(sequence(depth));
            result.text += (result.text.empty() ? "" : "|") + result.parts.back().text;
        }
        return result;
    }

    /// What is repeated in what is repeated, three times over, has many ways that take no character.
    bool mayBeRefused() const { return _size > 40 || _repetitions > 12 || _mostNested > 2; }

private:
    Expression sequence(int depth)
    {
        Expression result;
        for (unsigned int count = 1 + _input.below(3); count > 0; --count)
        {
            result.add(element(depth));
            result.text += result.parts.back().text;
        }
        return result;
    }

    Expression element(int depth)
    {
        const bool isGroup = depth < 3 && _input.chance(4);
        Expression atom;
        if (isGroup)
        {
            Expression inner = alternatives(depth + 1);
            atom.text = "(" + inner.text + ")";
            atom.add(std::move(inner));
        }
        else
        {
            atom = oneOf();
        }
        return _input.chance(6) ? repetition(std::move(atom)) : atom;
    }

    Expression oneOf()
    {
        struct Choice
        {
            const char* text;
            const char* characters;
        };
        static constexpr Choice CHOICES[] = {
            {"a", "a"},     {"b", "b"},    {"\\.", "."},         {"[ab]", "ab"},         {"[^a]", "bc.1"},
            {".", "abc.1"}, {"[]a]", "a"}, {"[[:digit:]]", "1"}, {"[^[:alpha:]]", ".1"}, {"[a-c]", "abc"},
            {"[.]", "."},   {"c", "c"},
        };
        ++_size;
        const Choice& choice = CHOICES[_input.below(std::size(CHOICES))];
        Expression result;
        result.kind = Expression::Kind::OneOf;
        result.text = choice.text;
        result.characters = choice.characters;
        return result;
    }

    Expression repetition(Expression part)
    {
        ++_repetitions;
        Expression result;
        result.nested = part.nested + 1;
        _mostNested = std::max(_mostNested, result.nested);
        result.kind = Expression::Kind::Repetition;
        switch (_input.below(6))
        {
        case 0:
            result.text = part.text + "*";
            result.most = ENDLESS;
            break;
        case 1:
            result.text = part.text + "+";
            result.least = 1;
            result.most = ENDLESS;
            break;
        case 2:
            result.text = part.text + "?";
            result.most = 1;
            break;
        case 3:
            result.least = _input.below(3);
            result.most = ENDLESS;
            result.text = part.text + "{" + std::to_string(result.least) + ",}";
            break;
        default:
            result.least = _input.below(3);
            result.most = result.least + _input.below(3);
            result.text = part.text + "{" + std::to_string(result.least) +
                          (result.most == result.least ? "}" : "," + std::to_string(result.most) + "}");
            _size *= 2;
            break;
        }
        result.parts.push_back(std::move(part));
        return result;
    }

    Input& _input;
    std::size_t _size = 0;        // how much of it there is when its repetitions are written out, at least
    std::size_t _repetitions = 0; // as they are written
    std::size_t _mostNested = 0;  // of them in each other
};

void tryGenerated(Input& input)
{
    Generator generator(input);
    const Expression expression = generator.alternatives(0);
    const std::string grouped = "^(" + expression.text + ")$";
    const Zol::RegularExpression compiled(grouped, FLAGS);
    const Zol::RegularExpression anchored(zolhost::anchored(expression.text), FLAGS);
    if (!compiled.isExpressionValid() || !anchored.isExpressionValid())
    {
        expect(generator.mayBeRefused(), "is refused", expression.text);
        return;
    }
    for (int subjects = 0; subjects < 4; ++subjects)
    {
        std::string subject;
        for (unsigned int length = input.below(12); length > 0; --length)
        {
            subject += "abc.1"[input.below(5)];
        }
        const bool matches = expression.matchesWhole(subject);
        expectSame(compiled.match(subject, 0), matches, grouped + " on " + subject + ", the match", "");
        expectSame(anchored.match(subject, 0), matches, expression.text + " on " + subject + ", whole", "");
    }
}

void tryBytes(const std::string& text, const std::string& subject)
{
    const MemoryWatch memory;
    {
        const Zol::RegularExpression compiled("^" + text + "$", FLAGS);
        const bool matches = compiled.match(subject, 0);
        expect(!matches || compiled.isExpressionValid(), "matches though it isn't valid", text);
        if (zolhost::whyNotForWholeName(text).empty() && zolhost::isValidExpression(text))
        {
            zolhost::forWholeName(text);
        }
    }
    expect(memory.peak() <= MAX_MEMORY, "took " + std::to_string(memory.peak()) + " bytes", text);
}

} // namespace

// An operator's expression: one that is generated together with its meaning, or any bytes and a name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input(data, size);
    if (input.below(2) == 0)
    {
        tryGenerated(input);
        return 0;
    }
    const std::string text = input.line().c_str();
    tryBytes(text, std::string(input.rest().c_str()).substr(0, 255));
    return 0;
}
