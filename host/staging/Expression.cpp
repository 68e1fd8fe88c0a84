#include "staging/Expression.h"

#include <zol/common/RegularExpression.h>

namespace zolhost
{

std::string forWholeName(const std::string& expression)
{
    const bool hasAlternatives = expression.find('|') != std::string::npos;
    if (!hasAlternatives || !isValidExpression(expression))
    {
        return expression;
    }
    std::string group = "(";
    group += expression;
    group += ')';
    return group;
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
