#include <zol/common/RegularExpression.h>

namespace Zol
{

static_assert((REG_EXTENDED | REG_NOSUB) == 9, "components pass 9 for these two");

RegularExpression::RegularExpression(const std::string& expression, int flags)
    : _valid(regcomp(&_compiled, expression.c_str(), flags) == 0)
{}

RegularExpression::~RegularExpression()
{
    if (_valid)
    {
        regfree(&_compiled);
    }
}

bool RegularExpression::match(const std::string& text, int flags) const
{
    return _valid && regexec(&_compiled, text.c_str(), 0, nullptr, flags) == 0;
}

} // namespace Zol
