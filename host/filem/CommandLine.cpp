#include "filem/CommandLine.h"

#include "filem/PrintableText.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <ostream>
#include <sstream>

namespace zolhost::filem
{

namespace
{

/// Shows that a command may follow the options.
class Formatter : public CLI::Formatter
{
public:
    std::string make_usage(const CLI::App* /*app*/, std::string name) const override
    {
        return "Usage: " + name +
               " [--root DIR | --config FILE] [OPTIONS] [--script FILE | COMMAND [ARGUMENTS]]\n";
    }
};

[[noreturn]] void refuse(const std::string& why)
{
    throw CommandFailure(ExitCode::Usage, printable(why) + ", see filem --help");
}

std::string footer()
{
    std::ostringstream text;
    printHelp(text, {});
    text << "\nWithout a command, commands are read from standard input, one a line, in one transaction up to"
            "\neach commit or abort.\n"
            "\nExit codes: 0 done, 1 refused or failed, 2 wrong use, 4 no such object, 5 no library or root";
    return text.str();
}

} // namespace

std::optional<CommandLine> parseCommandLine(int argc, const char* const* argv, std::ostream& out)
{
    CommandLine line;
    CLI::App app("Shows and changes a tree of directories as managed objects.", "filem");
    app.formatter(std::make_shared<Formatter>());
    auto* const root = app.add_option("--root", line.root, "root directory of the tree")->type_name("DIR");
    app.add_option("--config", line.config, "configuration document that names the root")
        ->type_name("FILE")
        ->excludes(root);
    app.add_option("--policies", line.policies, "policies that reserve directories, as JSON")
        ->type_name("FILE");
    app.add_option("--library", line.library, "library to load in place of the one beside the program")
        ->type_name("FILE");
    app.add_option("--script", line.script, "runs the commands of a file, one a line")->type_name("FILE");
    app.footer(footer());
    // whatever comes from the command on is the command's own, also if it begins with a dash
    app.prefix_command();
    try
    {
        app.parse(argc, argv);
    }
    catch (const CLI::CallForHelp&)
    {
        out << app.help();
        return std::nullopt;
    }
    catch (const CLI::ParseError& error)
    {
        refuse(error.what());
    }
    line.command = app.remaining();
    if (!line.command.empty() && line.command.front().starts_with('-'))
    {
        refuse("there is no option " + line.command.front());
    }
    if (!line.command.empty() && line.script)
    {
        refuse("there is a command beside the script");
    }
    return line;
}

} // namespace zolhost::filem
