#pragma once

#include <regex.h>
#include <string>

namespace Zol
{

/// A POSIX regular expression. Matching is safe from several threads at a time.
class RegularExpression
{
public:
    /// `flags` are those of `regcomp`, e.g. 9 for REG_EXTENDED with REG_NOSUB.
    RegularExpression(const std::string& expression, int flags);
    RegularExpression(const RegularExpression&) = delete;
    RegularExpression& operator=(const RegularExpression&) = delete;
    ~RegularExpression();

    bool isExpressionValid() const { return _valid; }

    /// True on a match; always false if the expression is not valid. `flags` are those of `regexec`.
    bool match(const std::string& text, int flags) const;

private:
    regex_t _compiled{};
    bool _valid;
};

} // namespace Zol
