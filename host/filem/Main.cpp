#include "engine/ConfigurationText.h"
#include "engine/Host.h"
#include "engine/HostFailure.h"
#include "engine/PolicyModel.h"
#include "engine/RootDirectory.h"
#include "filem/CommandLine.h"
#include "filem/Script.h"
#include "filem/Session.h"
#include "filem/output/Interrupt.h"
#include "filem/output/Pager.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Quoting.h"
#include "filem/output/Terminal.h"
#include "filem/shell/Candidates.h"
#include "filem/shell/Shell.h"
#include "filem/verbs/Help.h"

#include <algorithm>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string_view>
#include <system_error>
#include <unistd.h>

namespace
{

using namespace zolhost::filem;
namespace fs = std::filesystem;

/// Absolute and without links, which the component would not follow where a path goes back by "..".
std::string rootDirectory(const fs::path& root)
{
    std::error_code error;
    const fs::path directory = fs::canonical(root, error);
    if (!error && !fs::is_directory(directory, error) && !error)
    {
        error = std::make_error_code(std::errc::not_a_directory);
    }
    if (error)
    {
        throw CommandFailure(ExitCode::NoHost,
                             "there is no root " + printable(root.string()) + ": " + error.message());
    }
    return directory.string();
}

/// Absolute, so that it is taken for a path whatever it begins with.
std::string configurationDocument(const fs::path& file)
{
    if (!fs::is_regular_file(file))
    {
        throw CommandFailure(ExitCode::NoHost, "there is no configuration " + printable(file.string()));
    }
    return fs::absolute(file).string();
}

std::string configurationOf(const CommandLine& line)
{
    if (line.root)
    {
        return zolhost::configurationFor(rootDirectory(*line.root));
    }
    return line.config ? configurationDocument(*line.config) : zolhost::configurationWithoutRoot();
}

zolhost::Host::Setup setupOf(const CommandLine& line)
{
    zolhost::Host::Setup setup;
    setup.library = line.library ? *line.library : zolhost::Host::defaultLibrary();
    setup.configuration = configurationOf(line);
    try
    {
        if (line.policies)
        {
            setup.policies = zolhost::readPolicies(*line.policies);
        }
    }
    catch (const zolhost::BadModel& bad)
    {
        throw CommandFailure(ExitCode::Usage, "the policies " + printable(line.policies->string()) +
                                                  " can't be used: " + printable(bad.what()));
    }
    return setup;
}

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

constexpr std::string_view COMPLETE = "__complete";

/// The hidden command that completions of other shells call: __complete -- WORD...
bool isToBeCompleted(const CommandLine& line)
{
    return line.command.size() > 2 && line.command[0] == COMPLETE && line.command[1] == "--";
}

/// What the last word can become, one a line.
void printCandidates(const CommandLine& line)
{
    std::optional<zolhost::Host> host;
    std::optional<Session> session;
    const auto openSession = [&]() -> Session& {
        const auto setup = setupOf(line);
        host.emplace(setup);
        const std::string root = zolhost::rootDirectoryOf(*host, setup.configuration);
        return session.emplace(*host, root, Session::Surroundings(), std::cout, std::cerr);
    };
    const Words words(line.command.begin() + 2, line.command.end());
    auto candidates = candidatesFor(words, CommandKind::Alone, openSession);
    candidates.sort();
    for (const auto& candidate : candidates.list)
    {
        const bool isPrintable = printable(candidate.word) == candidate.word;
        std::cout << (isPrintable ? candidate.word : shellQuoted(candidate.word)) << '\n';
    }
}

ExitCode run(const CommandLine& line)
{
    if (isToBeCompleted(line))
    {
        printCandidates(line);
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
        if (!std::cout.flush())
        {
            return report(ExitCode::Failed, "standard output can't be written");
        }
        return static_cast<int>(code);
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

/// Also if the rest can't be understood.
bool asksForCompletion(const Words& arguments)
{
    const auto complete = std::ranges::find(arguments, COMPLETE);
    return complete != arguments.end() && std::none_of(arguments.begin(), complete, findVerb);
}

/// Whoever types a line wants no failures in it.
void silenceErrors()
{
    const int silence = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(silence, STDERR_FILENO);
    close(silence);
}

} // namespace

int main(int argc, char** argv)
{
    if (!asksForCompletion(Words(argv + std::min(argc, 1), argv + argc)))
    {
        return runProgram(argc, argv);
    }
    silenceErrors();
    runProgram(argc, argv);
    return static_cast<int>(ExitCode::Done);
}
