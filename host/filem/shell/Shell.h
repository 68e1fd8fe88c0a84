#pragma once

#include "filem/Interpreter.h"
#include "filem/Session.h"
#include "filem/shell/CommandThread.h"
#include "filem/shell/GatedOutput.h"
#include "filem/shell/LineEditor.h"
#include "filem/shell/ShellSignals.h"

#include <functional>
#include <ostream>
#include <string>

namespace zolhost::filem
{

/// Filem at a terminal: one line after the other, with history and completion, in one open transaction.
/// Ctrl-C gives the prompt back at once.
class Shell
{
public:
    Shell(Host& host, std::string rootDirectory, Session::Surroundings surroundings, bool isPaged);

    /// Until the operator leaves, the terminal is lost or the program is told to end. Failed if what was
    /// staged is dropped without the operator having said so.
    ExitCode run();

private:
    // on the thread of commands
    void runLine(const std::string& line);
    ExitCode runPaged(const Pipeline& pipeline);
    void finishLine();

    // on the thread of the terminal
    Completion completionFor(const std::string& textToCursor);
    bool give(std::function<void()> work);
    bool mayLeave();
    bool mayLeaveAfter(const std::string& answer);
    ExitCode end();
    static void tell(const std::string& text);

    const bool _isPaged;
    ShellSignals _signals;
    OutputGate _gate;
    GatedBuffer _outBuffer;
    GatedBuffer _errBuffer;
    std::ostream _out;
    std::ostream _err;
    // these belong to the thread of commands while that is at work
    Session _session;
    std::string _nextPrompt;
    bool _wasInterrupted = false;
    bool _wantsToLeave = false;
    ExitCode _code = ExitCode::Done;

    std::string _prompt;
    LineEditor _editor;
    CommandThread _commands;
};

} // namespace zolhost::filem
