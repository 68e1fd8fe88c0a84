#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace zolhost::filem
{

enum class ExitCode
{
    Done = 0,
    Failed = 1,
    Usage = 2,
    Remains = 3,
    NoSuchObject = 4,
    NoHost = 5
};

struct ExitCodeMeaning
{
    ExitCode code;
    std::string_view meaning;
};

/// For help and the manual.
inline constexpr ExitCodeMeaning EXIT_CODES[] = {
    {ExitCode::Done, "done; of a preview: nothing would change"},
    {ExitCode::Failed, "refused or failed; of a preview: something would change"},
    {ExitCode::Usage, "wrong use, or a name that can't be one"},
    {ExitCode::Remains, "committed, but something remains; of a preview: it would, or is refused"},
    {ExitCode::NoSuchObject, "no such object"},
    {ExitCode::NoHost, "no library or no root"},
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
