#pragma once

#include <regex.h>
#include <stdexcept>
#include <string>

namespace zolbench
{

/// An expression that whole names match.
class Expression
{
public:
    explicit Expression(const std::string& text)
    {
        if (::regcomp(&_compiled, ("^" + text + "$").c_str(), REG_EXTENDED | REG_NOSUB) != 0)
        {
            throw std::runtime_error(text);
        }
    }
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;
    ~Expression() { ::regfree(&_compiled); }

    bool matches(const char* text) const { return ::regexec(&_compiled, text, 0, nullptr, 0) == 0; }

private:
    regex_t _compiled{};
};

} // namespace zolbench
