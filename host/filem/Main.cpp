#include "engine/ConfigurationText.h"
#include "engine/Host.h"
#include "engine/HostFailure.h"
#include "engine/PolicyModel.h"
#include "filem/CommandLine.h"
#include "filem/PrintableText.h"
#include "filem/Script.h"
#include "filem/Session.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
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

ExitCode runOne(Session& session, const Words& words)
{
    const ExitCode code = session.run(words);
    if (session.hasChanges())
    {
        session.run({"commit"});
    }
    return code;
}

ExitCode run(const CommandLine& line)
{
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
    if (!line.command.empty())
    {
        const Command& command = commandOf(line.command);
        if (command.needsSession)
        {
            throw CommandFailure(ExitCode::Usage,
                                 std::string(command.name) + " makes sense in a script only");
        }
        if (command.name == "help")
        {
            printHelp(std::cout, {line.command.begin() + 1, line.command.end()});
            return ExitCode::Done;
        }
    }

    zolhost::Host host(setupOf(line));
    Session session(host, std::cout, std::cerr);
    if (!line.command.empty())
    {
        return runOne(session, line.command);
    }
    if (line.script)
    {
        runScript(session, file, std::cerr);
    }
    else if (isatty(STDIN_FILENO) != 0)
    {
        runTerminal(session, std::cin, std::cerr);
    }
    else
    {
        runScript(session, std::cin, std::cerr);
    }
    return ExitCode::Done;
}

int report(ExitCode code, const std::string& text)
{
    std::cout.flush();
    std::cerr << "filem: " << text << '\n';
    return static_cast<int>(code);
}

} // namespace

int main(int argc, char** argv)
{
    try
    {
        ExitCode code = ExitCode::Done;
        if (const auto line = parseCommandLine(argc, argv, std::cout))
        {
            code = run(*line);
        }
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
