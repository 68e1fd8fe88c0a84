#include "staging/Expression.h"

#include <zol/common/RegularExpression.h>

#include <cctype>

namespace zolhost
{

namespace
{

/// What stands in an expression outside of bracket expressions.
struct Parts
{
    bool hasAlternatives = false;
    bool hasReferencesBack = false;
    bool hasUnmatchedParenthesis = false;
    bool endsInBackslash = false;
};

Parts partsOf(const std::string& expression)
{
    Parts parts;
    int depth = 0;
    for (std::size_t i = 0; i < expression.size(); ++i)
    {
        switch (expression[i])
        {
        case '\\':
            ++i;
            parts.endsInBackslash = i == expression.size();
            parts.hasReferencesBack =
                parts.hasReferencesBack ||
                (i < expression.size() && std::isdigit(static_cast<unsigned char>(expression[i])) != 0);
            break;
        case '[': {
            // a bracket right behind the first one or its ^ is an ordinary one
            const auto first = expression.find_first_not_of('^', i + 1);
            const auto end = first == std::string::npos ? first : expression.find(']', first + 1);
            i = end == std::string::npos ? expression.size() : end;
            break;
        }
        case '|':
            parts.hasAlternatives = true;
            break;
        case '(':
            ++depth;
            break;
        case ')':
            parts.hasUnmatchedParenthesis = parts.hasUnmatchedParenthesis || --depth < 0;
            break;
        default:
            break;
        }
    }
    return parts;
}

} // namespace

std::string forWholeName(const std::string& expression)
{
    if (!partsOf(expression).hasAlternatives || !isValidExpression(expression))
    {
        return expression;
    }
    std::string group = "(";
    group += expression;
    group += ')';
    return group;
}

std::string whyNotForWholeName(const std::string& expression)
{
    const Parts parts = partsOf(expression);
    if (parts.endsInBackslash)
    {
        return "the expression ends in a backslash, which would quote the end of the name";
    }
    if (parts.hasAlternatives && parts.hasReferencesBack)
    {
        return "an expression with alternatives can't refer back";
    }
    if (parts.hasAlternatives && parts.hasUnmatchedParenthesis)
    {
        return "a parenthesis in the expression has no beginning";
    }
    return {};
}

std::string anchored(const std::string& expression)
{
    std::string whole = "^";
    whole += forWholeName(expression);
    whole += '$';
    return whole;
}

bool isValidExpression(const std::string& expression)
{
    return Zol::RegularExpression("^" + expression + "$", REG_EXTENDED | REG_NOSUB).isExpressionValid();
}

} // namespace zolhost
