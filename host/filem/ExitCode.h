#pragma once

#include <stdexcept>
#include <string>

namespace zolhost::filem
{

enum class ExitCode
{
    Done = 0,
    Failed = 1,  ///< refused or failed; of a preview: something would change
    Usage = 2,   ///< nothing that can be asked for
    Remains = 3, ///< committed, but something remains; of a preview: refused
    NoSuchObject = 4,
    NoHost = 5 ///< no library or no root
};

/// A command ends here; `what()` is for the operator, with no control bytes in it.
class CommandFailure : public std::runtime_error
{
public:
    CommandFailure(ExitCode code, const std::string& text)
        : std::runtime_error(text)
        , _code(code)
    {}

    ExitCode code() const { return _code; }

private:
    ExitCode _code;
};

} // namespace zolhost::filem
