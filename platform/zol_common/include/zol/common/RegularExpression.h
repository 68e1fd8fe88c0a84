#pragma once

#include <cstddef>
#include <mutex>
#include <regex.h>
#include <string>

namespace Zol
{

/// A POSIX regular expression. Matching is safe from several threads at a time.
///
/// One that would take the system too much memory or time, through repetitions of repetitions for instance,
/// is not valid, and what the system keeps of one match for the next is dropped in time.
class RegularExpression
{
public:
    /// `flags` are those of `regcomp`, e.g. 9 for REG_EXTENDED with REG_NOSUB.
    RegularExpression(const std::string& expression, int flags);
    RegularExpression(const RegularExpression&) = delete;
    RegularExpression& operator=(const RegularExpression&) = delete;
    ~RegularExpression();

    /// Whether it can match anything at all.
    bool isExpressionValid() const { return _valid; }

    /// True on a match; always false if the expression is not valid. `flags` are those of `regexec`.
    bool match(const std::string& text, int flags) const;

private:
    void dropWhatIsKept() const;

    std::string _expression;
    int _flags;
    std::size_t _bytesToKeep;
    bool _valid;
    mutable std::mutex _mutex; // protects the following two
    mutable regex_t _compiled{};
    mutable std::size_t _matchedBytes = 0;
};

} // namespace Zol
