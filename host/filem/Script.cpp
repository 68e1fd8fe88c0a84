#include "filem/Script.h"

#include "filem/Interpreter.h"

#include <istream>
#include <string>
#include <string_view>

namespace zolhost::filem
{

namespace
{

class Runner
{
public:
    Runner(Session& session, bool keepsGoing)
        : _session(session)
        , _keepsGoing(keepsGoing)
    {}

    void runNumbered(std::string_view line, std::size_t number)
    {
        const bool mayFail = line.starts_with('-');
        if (mayFail)
        {
            line.remove_prefix(1);
        }
        try
        {
            _code = runLine(_session, line);
            if (_code == ExitCode::Remains && !mayFail && _firstFailure == ExitCode::Done)
            {
                _firstFailure = _code;
            }
        }
        catch (const CommandFailure& failure)
        {
            const std::string text = "line " + std::to_string(number) + ": " + failure.what();
            if (!mayFail && !_keepsGoing)
            {
                _session.abort();
                throw CommandFailure(failure.code(), text);
            }
            _session.warn(text);
            if (!mayFail && _firstFailure == ExitCode::Done)
            {
                _firstFailure = failure.code();
            }
        }
    }

    ExitCode code() const { return _firstFailure == ExitCode::Done ? _code : _firstFailure; }

private:
    Session& _session;
    bool _keepsGoing;
    ExitCode _code = ExitCode::Done;
    ExitCode _firstFailure = ExitCode::Done; // Done: there was none
};

} // namespace

ExitCode runScript(Session& session, std::istream& text, bool keepsGoing)
{
    Runner runner(session, keepsGoing);
    std::string line;
    for (std::size_t number = 1; !session.isOver() && std::getline(text, line); ++number)
    {
        runner.runNumbered(line, number);
    }
    if (text.bad())
    {
        session.abort();
        throw CommandFailure(ExitCode::Failed, "the script can't be read to its end");
    }
    if (session.hasStaged())
    {
        session.abort();
        throw CommandFailure(ExitCode::Failed, "no commit: what is staged is dropped");
    }
    return runner.code();
}

} // namespace zolhost::filem
