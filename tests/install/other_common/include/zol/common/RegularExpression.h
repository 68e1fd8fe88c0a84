#pragma once

#include <regex>
#include <string>

namespace Zol
{

class RegularExpression
{
public:
    RegularExpression(const std::string& expression, int flags);

    bool isExpressionValid() const;
    bool match(const std::string& text, int flags) const;

private:
    bool _valid = true;
    std::regex _expression;
};

} // namespace Zol
