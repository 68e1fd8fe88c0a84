#include "filem/shell/Shell.h"

#include "engine/ThreadContext.h"
#include "filem/output/Interrupt.h"
#include "filem/output/Pager.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Terminal.h"
#include "filem/shell/Prompt.h"

#include <exception>
#include <iostream>
#include <memory>
#include <unistd.h>
#include <utility>

namespace zolhost::filem
{

namespace
{

using Kind = LineEditor::Input::Kind;

bool isShownByPages(const Pipeline& pipeline)
{
    const VerbDescription* const verb = findVerb(pipeline.command.front());
    return verb != nullptr &&
           (verb->kind == VerbKind::Read || verb->name == "diff" || verb->name == "status");
}

/// Sends data elsewhere as long as it lives.
class OutTo
{
public:
    OutTo(Session& session, std::ostream& out)
        : _session(session)
        , _before(session.out())
    {
        session.setOut(out);
    }
    OutTo(const OutTo&) = delete;
    OutTo& operator=(const OutTo&) = delete;
    ~OutTo() { _session.setOut(_before); }

private:
    Session& _session;
    std::ostream& _before;
};

} // namespace

Shell::Shell(Host& host, std::string rootDirectory, Session::Surroundings surroundings, bool isPaged)
    : _isPaged(isPaged && terminal::isTerminal(STDOUT_FILENO))
    , _outBuffer(_gate, STDOUT_FILENO)
    , _errBuffer(_gate, STDERR_FILENO)
    , _out(&_outBuffer)
    , _err(&_errBuffer)
    , _session(host, std::move(rootDirectory), std::move(surroundings), _out, _err)
    , _nextPrompt(promptOf(_session))
    , _prompt(_nextPrompt)
    , _editor(_signals, HistoryFile(HistoryFile::defaultFile()))
    , _commands(_signals, _gate)
{
    _editor.setComplete([this](const std::string& textToCursor) { return completionFor(textToCursor); });
}

ExitCode Shell::run()
{
    while (true)
    {
        const auto input = _editor.read(_prompt);
        if (input.kind == Kind::Gone)
        {
            return end();
        }
        const bool isRun = input.kind == Kind::Line && give([this, input] { runLine(input.line); });
        const bool wantsToLeave = input.kind == Kind::Left || (isRun && _wantsToLeave);
        if (wantsToLeave && mayLeave())
        {
            return ExitCode::Done;
        }
    }
}

void Shell::runLine(const std::string& line)
{
    _code = ExitCode::Done;
    // of a command that was given up before
    _wasInterrupted = false;
    try
    {
        for (const auto& pipeline : parseLine(line))
        {
            _code = runPaged(pipeline);
            if (_session.isOver())
            {
                break;
            }
        }
    }
    catch (const Interrupted&)
    {
        _wasInterrupted = true;
    }
    catch (const CommandFailure& failure)
    {
        _session.warn(failure.what());
        _code = failure.code();
    }
    catch (const std::exception& failure)
    {
        _session.warn(printable(failure.what()));
        _code = ExitCode::Failed;
    }
    finishLine();
}

ExitCode Shell::runPaged(const Pipeline& pipeline)
{
    if (!_isPaged || !isShownByPages(pipeline))
    {
        return runPipeline(_session, pipeline);
    }
    const auto [rows, columns] = terminal::sizeOf(STDOUT_FILENO);
    Pager pager(_out, rows, columns);
    std::ostream out(&pager);
    const OutTo outTo(_session, out);
    try
    {
        return runPipeline(_session, pipeline);
    }
    catch (const Interrupted&)
    {
        if (!pager.hasBegun())
        {
            throw;
        }
        // the operator has left the pager, which is no reason to leave out the next command
        interrupt::clear();
        return ExitCode::Done;
    }
}

void Shell::finishLine()
{
    // of a command that didn't come to its end
    ThreadContext::take();
    _session.renewReads();
    _out.flush();
    _err.flush();
    _wantsToLeave = _session.isOver();
    _session.stay();
    _nextPrompt = promptOf(_session);
}

/// Nothing if the operator doesn't wait for it.
Completion Shell::completionFor(const std::string& textToCursor)
{
    const Completion nothing = {textToCursor.size(), {}, {}, false};
    const auto result = std::make_shared<Completion>(nothing);
    const auto end = _commands.runUntilKey([this, textToCursor, result] {
        try
        {
            *result = complete(textToCursor, _session);
        }
        catch (const std::exception&)
        {
            // a Tab is no command that could fail
        }
        ThreadContext::take();
        _session.renewReads();
    });
    return end == CommandThread::End::Ended ? *result : nothing;
}

/// Whether it came to its end.
bool Shell::give(std::function<void()> work)
{
    const auto end = _commands.run(std::move(work));
    if (end != CommandThread::End::Ended)
    {
        if (!ShellSignals::mustEnd())
        {
            tell("\nfilem: interrupted; the component is still at work on it\n");
        }
        return false;
    }
    _prompt = _nextPrompt;
    if (std::exchange(_wasInterrupted, false))
    {
        tell("\nfilem: interrupted\n");
    }
    return true;
}

bool Shell::mayLeave()
{
    // what was given up before may still be at work
    if (!give([] {}))
    {
        return false;
    }
    const std::size_t changes = _session.hasStaged() ? countChanges(_session.plan()) : 0;
    if (changes == 0)
    {
        return true;
    }
    const auto answer =
        _editor.ask((changes == 1 ? "1 change is" : std::to_string(changes) + " changes are") +
                    std::string(" staged. [c]ommit, [d]rop, [s]tay? "));
    return answer.kind == Kind::Line && mayLeaveAfter(answer.line);
}

bool Shell::mayLeaveAfter(const std::string& answer)
{
    if (answer == "c" || answer == "commit")
    {
        return give([this] { runLine("commit"); }) && _code == ExitCode::Done && !_session.hasStaged();
    }
    if (answer == "d" || answer == "drop")
    {
        return give([this] { _session.abort(); });
    }
    return false;
}

/// Nobody is there any more who could be asked.
ExitCode Shell::end()
{
    _commands.finish();
    const bool dropsChanges = _session.hasStaged() && !_session.plan().isEmpty();
    _session.abort();
    if (dropsChanges)
    {
        tell("\nfilem: no commit: what is staged is dropped\n");
        return ExitCode::Failed;
    }
    return ExitCode::Done;
}

void Shell::tell(const std::string& text)
{
    std::cerr << text << std::flush;
}

} // namespace zolhost::filem
