#include "ExpressionCost.h"

#include <zol/common/RegularExpression.h>

namespace Zol
{

static_assert((REG_EXTENDED | REG_NOSUB) == 9, "components pass 9 for these two");

RegularExpression::RegularExpression(const std::string& expression, int flags)
    : _expression(expression, 0, expression.find('\0')) // as far as the system reads it
    , _flags(flags)
{
    const ExpressionCost cost(_expression, flags);
    _bytesToKeep = cost.bytesToKeep();
    _valid = cost.isAffordable() && regcomp(&_compiled, _expression.c_str(), flags) == 0;
}

RegularExpression::~RegularExpression()
{
    if (_valid)
    {
        regfree(&_compiled);
    }
}

bool RegularExpression::match(const std::string& text, int flags) const
{
    if (!_valid)
    {
        return false;
    }
    const std::scoped_lock lock(_mutex);
    if (_matchedBytes > _bytesToKeep)
    {
        dropWhatIsKept();
    }
    _matchedBytes += text.size();
    return regexec(&_compiled, text.c_str(), 0, nullptr, flags) == 0;
}

void RegularExpression::dropWhatIsKept() const
{
    regex_t fresh{};
    if (regcomp(&fresh, _expression.c_str(), _flags) == 0)
    {
        regfree(&_compiled);
        _compiled = fresh;
        _matchedBytes = 0;
    }
}

} // namespace Zol
