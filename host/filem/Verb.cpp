#include "filem/Verb.h"

#include "filem/Arguments.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Terminal.h"
#include "filem/verbs/Factories.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <ostream>
#include <sstream>
#include <unistd.h>

namespace zolhost::filem
{

namespace
{

using enum VerbKind;

constexpr VerbDescription VERBS[] = {
    {"ls", "", Read, "lists directories and files", "newMoIterator, nextMo; with -l getMoAttribute", makeLs},
    {"tree", "", Read, "draws a directory with all that is below it", "newMoIterator, nextMo", makeTree},
    {"find", "", Read, "finds directories and files by name, kind or size",
     "newMoIterator, nextMo; for sizes getMoAttribute", makeFind},
    {"stat", "show", Read, "shows all attributes of an object and its names", "getMoAttribute", makeStat},
    {"get", "", Read, "shows single attributes of an object", "getMoAttribute", makeGet},
    {"exists", "", Read, "tells whether there is such an object", "existsMo", makeExists},
    {"count", "", Read, "counts the children of an object", "countMoChildren", makeCount},
    {"why", "", Read, "tells what would refuse a change, and all that protects a place",
     "getMoAttribute (reservedByPolicy)", makeWhy},
    {"mkdir", "create", Change, "makes directories", "createMo", makeMkdir},
    {"rmdir", "", Change, "removes directories that hold no files", "deleteMo on a FileGroup", makeRmdir},
    {"rm", "", Change, "removes files",
     "deleteMo on a FileInformation; with --matching the action removeFile", makeRm},
    {"rmtree", "", Change, "removes directories with all in them, whatever markers say", "the action remove",
     makeRmtree},
    {"delete", "", Change, "removes files, and directories that hold no files", "deleteMo", makeDelete},
    {"action", "", Change, "calls an action of an object", "action", makeAction},
    {"diff", "preview", VerbKind::Session, "shows what a commit would do now", "", makeDiff},
    {"status", "", VerbKind::Session, "lists what is staged, and what has changed under it since", "",
     makeStatus},
    {"commit", "", VerbKind::Session, "does what is staged, and tells what became of it",
     "prepare, commit, finish", makeCommit},
    {"abort", "", VerbKind::Session, "drops what is staged", "abort, finish", makeAbort},
    {"restage", "", VerbKind::Session, "stages again what an abort or a failed commit dropped",
     "as the verbs that staged it", makeRestage},
    {"cd", "", VerbKind::Session, "goes to a directory", "", makeCd},
    {"up", "", VerbKind::Session, "goes to the directory above", "", makeUp},
    {"top", "", VerbKind::Session, "goes to the root", "", makeTop},
    {"pwd", "", VerbKind::Session, "prints the DN of the directory that one is in", "", makePwd},
    {"help", "?", Read, "explains the verbs, one verb or a class of objects", "", makeHelp},
    {"quit", "exit", VerbKind::Session, "ends the session", "", makeQuit},
};

/// As wide as the terminal, within what is pleasant to read.
std::size_t columnsForHelp()
{
    constexpr std::size_t FEWEST = 80;
    constexpr std::size_t MOST = 120;
    return terminal::isTerminal(STDOUT_FILENO)
               ? std::clamp(terminal::sizeOf(STDOUT_FILENO).columns, FEWEST, MOST)
               : FEWEST;
}

class Formatter : public CLI::Formatter
{
public:
    std::string make_option(const CLI::Option* option, bool isPositional) const override
    {
        constexpr std::size_t INDENT = 22;
        const std::size_t columns = columnsForHelp();
        std::string line = "  " + make_option_name(option, isPositional) + make_option_opts(option);
        line += line.size() + 2 <= INDENT ? std::string(INDENT - line.size(), ' ')
                                          : "\n" + std::string(INDENT, ' ');
        std::istringstream words(make_option_desc(option));
        std::string text;
        std::size_t column = INDENT;
        for (std::string word; words >> word; column += word.size() + 1)
        {
            if (column + word.size() > columns)
            {
                text += "\n" + std::string(INDENT, ' ');
                column = INDENT;
            }
            else
            {
                text += text.empty() ? "" : " ";
            }
            text += word;
        }
        return line + text + "\n";
    }

    std::string make_option_opts(const CLI::Option* option) const override
    {
        // of a positional one, the name says what it is
        if (option->get_positional())
        {
            return option->get_expected_max() > 1 ? " ..." : "";
        }
        return option->get_type_size() == 0 ? "" : " " + option->get_type_name();
    }
};

} // namespace

std::span<const VerbDescription> verbs()
{
    return VERBS;
}

const VerbDescription* findVerb(std::string_view name)
{
    const auto* const found = std::ranges::find_if(VERBS, [&](const auto& verb) {
        return verb.name == name || (!verb.alias.empty() && verb.alias == name);
    });
    return found == std::end(VERBS) ? nullptr : found;
}

std::unique_ptr<CLI::App> parserFor(const VerbDescription& description, Verb& verb)
{
    auto parser = std::make_unique<CLI::App>(std::string(description.summary), std::string(description.name));
    parser->formatter(std::make_shared<Formatter>());
    parser->set_help_flag("-h,--help", "print this help");
    Arguments arguments(*parser);
    verb.declare(arguments);
    if (!description.alias.empty())
    {
        parser->footer("The same as " + std::string(description.alias) + ".");
    }
    return parser;
}

std::string helpFor(const VerbDescription& description)
{
    const auto verb = description.make();
    return parserFor(description, *verb)->help();
}

bool parseArguments(const VerbDescription& description, Verb& verb, const Words& arguments, std::ostream& out)
{
    const auto parser = parserFor(description, verb);
    try
    {
        // it takes them from the last to the first
        parser->parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return false;
    }
    catch (const CLI::CallForHelp&)
    {
        out << parser->help();
        return true;
    }
    catch (const CLI::ParseError& error)
    {
        const std::string name(description.name);
        throw CommandFailure(ExitCode::Usage,
                             name + ": " + printable(error.what()) + ", see filem " + name + " --help");
    }
}

} // namespace zolhost::filem
