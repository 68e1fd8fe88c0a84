#include "engine/Host.h"
#include "engine/HostFailure.h"
#include "engine/RootDirectory.h"
#include "filem/CommandLine.h"
#include "filem/CompleteCommand.h"
#include "filem/HostSetup.h"
#include "filem/Script.h"
#include "filem/Session.h"
#include "filem/output/Interrupt.h"
#include "filem/output/Pager.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Terminal.h"
#include "filem/shell/Shell.h"
#include "filem/verbs/Help.h"

#include <algorithm>
#include <exception>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <unistd.h>

namespace
{

using namespace zolhost::filem;

/// Wrong use needs no host to be told, nor does help. Nothing if the command is to be run.
std::optional<ExitCode> answerWithoutHost(const CommandLine& line)
{
    if (line.wantsHelp)
    {
        std::cout << helpText();
        return ExitCode::Done;
    }
    if (line.command.empty())
    {
        return std::nullopt;
    }
    const VerbDescription* const verb = findVerb(line.command.front());
    if (verb == nullptr)
    {
        throw CommandFailure(ExitCode::Usage,
                             "there is no command " + printable(line.command.front()) + ", see filem --help");
    }
    if (parseArguments(*verb, *verb->make(), {line.command.begin() + 1, line.command.end()}, std::cout))
    {
        return ExitCode::Done;
    }
    if (verb->name == "help")
    {
        printHelp(std::cout, line.command.size() > 1 ? line.command[1] : "");
        return ExitCode::Done;
    }
    if (verb->kind == VerbKind::Session)
    {
        throw CommandFailure(ExitCode::Usage, std::string(verb->name) + " makes sense in a session only");
    }
    return std::nullopt;
}

bool isPaged(const CommandLine& line)
{
    const bool isReading = !line.command.empty() && findVerb(line.command.front())->kind == VerbKind::Read;
    return isReading && !line.noPager && !line.isPlain && terminal::isTerminal(STDOUT_FILENO);
}

Session::Surroundings surroundingsOf(const CommandLine& line)
{
    Session::Surroundings surroundings;
    surroundings.canAsk = terminal::isTerminal(STDIN_FILENO) && terminal::isTerminal(STDERR_FILENO);
    surroundings.showsProgress = terminal::isTerminal(STDERR_FILENO) && !line.isPlain;
    surroundings.hasColours = terminal::takesColours(STDOUT_FILENO) && !line.isPlain;
    surroundings.audit = line.audit;
    return surroundings;
}

ExitCode runCommand(zolhost::Host& host, const std::string& root, const CommandLine& line)
{
    const auto surroundings = surroundingsOf(line);
    if (!isPaged(line))
    {
        Session session(host, root, surroundings, std::cout, std::cerr);
        return session.run(line.command);
    }
    const auto [rows, columns] = terminal::sizeOf(STDOUT_FILENO);
    Pager pager(std::cout, rows, columns);
    std::ostream out(&pager);
    Session session(host, root, surroundings, out, std::cerr);
    try
    {
        return session.run(line.command);
    }
    catch (const Interrupted&)
    {
        // the operator has left the pager
        return ExitCode::Done;
    }
}

ExitCode runText(zolhost::Host& host, const std::string& root, const CommandLine& line, std::istream& text)
{
    auto surroundings = surroundingsOf(line);
    surroundings.mode = Session::Mode::Script;
    surroundings.canAsk = false;
    Session session(host, root, surroundings, std::cout, std::cerr);
    return runScript(session, text, line.keepsGoing);
}

ExitCode run(const CommandLine& line)
{
    if (isCompleteCommand(line))
    {
        printCandidates(line, std::cout);
        return ExitCode::Done;
    }
    if (const auto code = answerWithoutHost(line))
    {
        return *code;
    }
    std::ifstream file;
    if (line.script)
    {
        file.open(*line.script);
        if (!file)
        {
            throw CommandFailure(ExitCode::Usage,
                                 "the script " + printable(line.script->string()) + " can't be read");
        }
    }
    keepLogFromOperator();
    const auto setup = setupOf(line);
    zolhost::Host host(setup);
    const std::string root = zolhost::rootDirectoryOf(host, setup.configuration);
    if (!line.command.empty())
    {
        return runCommand(host, root, line);
    }
    if (line.commands)
    {
        std::istringstream commands(*line.commands);
        return runText(host, root, line, commands);
    }
    if (line.script)
    {
        return runText(host, root, line, file);
    }
    if (terminal::isTerminal(STDIN_FILENO))
    {
        auto surroundings = surroundingsOf(line);
        surroundings.mode = Session::Mode::Shell;
        Shell shell(host, root, surroundings, !line.noPager && !line.isPlain);
        return shell.run();
    }
    return runText(host, root, line, std::cin);
}

int report(ExitCode code, const std::string& text)
{
    std::cout.flush();
    std::cerr << "filem: " << text << '\n';
    return static_cast<int>(code);
}

int runProgram(int argc, char** argv)
{
    try
    {
        const ExitCode code = run(parseCommandLine(argc, argv));
        if (!std::cout.flush() && terminal::isReaderGone(STDOUT_FILENO))
        {
            return static_cast<int>(ExitCode::Failed);
        }
        if (!std::cout.flush())
        {
            return report(ExitCode::Failed, "standard output can't be written");
        }
        return static_cast<int>(code);
    }
    catch (const Interrupted&)
    {
        return static_cast<int>(ExitCode::Failed);
    }
    catch (const CommandFailure& failure)
    {
        return report(failure.code(), failure.what());
    }
    catch (const zolhost::HostFailure& failure)
    {
        return report(ExitCode::NoHost, printable(failure.what()));
    }
    catch (const std::exception& failure)
    {
        return report(ExitCode::Failed, printable(failure.what()));
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (!asksForCandidates(Words(argv + std::min(argc, 1), argv + argc)))
    {
        return runProgram(argc, argv);
    }
    silenceErrors();
    runProgram(argc, argv);
    return static_cast<int>(ExitCode::Done);
}
