#include "staging/Expression.h"

#include <zol/common/RegularExpression.h>

namespace zolhost
{

std::string forWholeName(const std::string& expression)
{
    const bool hasAlternatives = expression.find('|') != std::string::npos;
    return hasAlternatives && isValidExpression(expression) ? "(" + expression + ")" : expression;
}

std::string anchored(const std::string& expression)
{
    return "^" + forWholeName(expression) + "$";
}

bool isValidExpression(const std::string& expression)
{
    return Zol::RegularExpression("^" + expression + "$", REG_EXTENDED | REG_NOSUB).isExpressionValid();
}

} // namespace zolhost
