#include "filem/CommandLine.h"

#include "filem/output/PrintableText.h"
#include "filem/verbs/Help.h"

#include <CLI/CLI.hpp>
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
               " [--root DIR | --config FILE] [OPTIONS] [COMMAND [ARGUMENTS] | -c TEXT | --script FILE]\n";
    }
};

[[noreturn]] void refuse(const std::string& why)
{
    throw CommandFailure(ExitCode::Usage, printable(why) + ", see filem --help");
}

} // namespace

std::unique_ptr<CLI::App> globalParser(CommandLine& line)
{
    auto app =
        std::make_unique<CLI::App>("Shows and changes a tree of directories as managed objects.", "filem");
    app->formatter(std::make_shared<Formatter>());
    auto* const root = app->add_option("--root", line.root, "root directory of the tree")->type_name("DIR");
    app->add_option("--config", line.config, "configuration document that names the root")
        ->type_name("FILE")
        ->excludes(root);
    app->add_option("--policies", line.policies, "policies that reserve directories, as JSON")
        ->type_name("FILE");
    app->add_option("--library", line.library, "library to load in place of the one beside the program")
        ->type_name("FILE");
    auto* const commands =
        app->add_option("-c", line.commands, "runs these commands as a script")->type_name("TEXT");
    app->add_option("--script", line.script, "runs the commands of a file, one a line")
        ->type_name("FILE")
        ->excludes(commands);
    app->add_flag("--keep-going", line.keepsGoing, "goes on with a script after a command that fails");
    app->add_option("--audit", line.audit, "appends a line of JSON for each transaction")->type_name("FILE");
    app->add_flag("--no-pager", line.noPager, "prints what is longer than the screen as it is");
    app->add_flag("--plain", line.isPlain, "no colours and no pager, as where output isn't a terminal");
    // whatever comes from the command on is the command's own, also if it begins with a dash
    app->prefix_command();
    return app;
}

std::string helpText()
{
    CommandLine line;
    std::ostringstream text;
    text << globalParser(line)->help() << '\n';
    printHelp(text, {});
    text << "\nWithout a command, filem is a shell at a terminal and runs the commands of standard input "
            "otherwise,\nin one transaction up to each commit or abort.\n"
            "\nExit codes: 0 done, 1 refused or failed, 2 wrong use, 3 committed but something remains,\n"
            "4 no such object, 5 no library or root\n";
    return text.str();
}

CommandLine parseCommandLine(int argc, const char* const* argv)
{
    CommandLine line;
    const auto app = globalParser(line);
    try
    {
        app->parse(argc, argv);
    }
    catch (const CLI::CallForHelp&)
    {
        line.wantsHelp = true;
        return line;
    }
    catch (const CLI::ParseError& error)
    {
        refuse(error.what());
    }
    line.command = app->remaining();
    if (!line.command.empty() && line.command.front().starts_with('-'))
    {
        refuse("there is no option " + line.command.front());
    }
    if (!line.command.empty() && (line.script || line.commands))
    {
        refuse("there is a command beside the script");
    }
    return line;
}

} // namespace zolhost::filem
