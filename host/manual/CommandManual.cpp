#include "filem/ExitCode.h"
#include "filem/Verb.h"
#include "filem/output/LineFilter.h"
#include "filem/verbs/Help.h"
#include "manual/Mdoc.h"
#include "manual/Pages.h"
#include "manual/Syntax.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace zolhost::manual
{

namespace
{

const std::vector<std::string> HELP = {"-h", "--help"};

/// With a capital and a full stop. For what doesn't begin with a name.
std::string sentence(std::string_view text)
{
    std::string result(text);
    result.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(result.front())));
    return result + ".";
}

std::string flag(const std::string& name)
{
    return "Fl " + Mdoc::argument(name.substr(1));
}

std::string valueOf(const Parameter& option)
{
    return option.value.empty() ? "" : " Ar " + Mdoc::argument(option.value);
}

/// One option beside another that excludes it.
std::string alternatives(const Syntax& syntax, const Parameter& option, std::set<std::string>& shown)
{
    std::string text = flag(option.names.back()) + valueOf(option);
    for (const auto& other : syntax.options)
    {
        if (std::ranges::find(other.excluded, option.names.back()) != other.excluded.end() &&
            shown.insert(other.names.back()).second)
        {
            text += " | " + flag(other.names.back()) + valueOf(other);
        }
    }
    return text;
}

void printSynopsis(Mdoc& page)
{
    const Syntax syntax = globalSyntax();
    std::set<std::string> shown;
    page.section("SYNOPSIS");
    page.macro("Nm");
    for (const auto& option : syntax.options)
    {
        if (shown.insert(option.names.back()).second)
        {
            page.macro("Op " + alternatives(syntax, option, shown));
        }
    }
    page.macro("Op Ar COMMAND Op Ar ARGUMENT ...");
}

std::string head(const Parameter& option)
{
    std::string text;
    for (const auto& name : option.names)
    {
        text += (text.empty() ? "" : " , ") + flag(name);
    }
    return text + valueOf(option);
}

void printOption(Mdoc& page, const Parameter& option)
{
    page.macro("It " + head(option));
    page.text(option.help);
}

std::string usage(const filem::VerbDescription& verb, const Syntax& syntax)
{
    std::string text = "Cm " + Mdoc::argument(verb.name) + " Oo Ar OPTION ... Oc";
    for (const auto& argument : syntax.arguments)
    {
        const std::string name =
            "Ar " + Mdoc::argument(argument.names.front()) + (argument.isRepeated ? " ..." : "");
        text += argument.isRequired ? " " + name : " Oo " + name + " Oc";
    }
    return text;
}

void printParameters(Mdoc& page, const Syntax& syntax)
{
    std::vector<Parameter> options = syntax.options;
    // that every command has it is said once
    std::erase_if(options, [](const Parameter& option) { return option.names == HELP; });
    if (options.empty() && syntax.arguments.empty())
    {
        return;
    }
    page.macro("Bl -tag -width Ds -compact");
    for (const auto& argument : syntax.arguments)
    {
        page.macro("It Ar " + Mdoc::argument(argument.names.front()));
        page.text(argument.help);
    }
    for (const auto& option : options)
    {
        printOption(page, option);
    }
    page.macro("El");
}

void printVerb(Mdoc& page, const filem::VerbDescription& verb)
{
    const Syntax syntax = syntaxOf(verb);
    page.macro("It " + usage(verb, syntax));
    page.text(sentence(verb.summary));
    if (!verb.alias.empty())
    {
        page.text("The same as");
        page.macro("Cm " + Mdoc::argument(verb.alias) + " .");
    }
    if (!verb.operations.empty())
    {
        page.text("It asks the component for: " + std::string(verb.operations) + ".");
    }
    printParameters(page, syntax);
}

void printVerbs(Mdoc& page)
{
    using enum filem::VerbKind;
    for (const auto kind : {Read, Change, Session})
    {
        page.subsection(filem::headOf(kind));
        page.macro("Bl -tag -width Ds");
        for (const auto& verb : filem::verbs())
        {
            if (verb.kind == kind)
            {
                printVerb(page, verb);
            }
        }
        page.macro("El");
    }
}

void printFilters(Mdoc& page)
{
    page.subsection("Filters");
    page.text("In a session and in scripts, a command can be followed by");
    page.macro("Sq |");
    page.text("and a filter, which takes the lines that the command prints and gives:");
    page.macro("Bl -tag -width Ds");
    for (const auto& filter : filem::filters())
    {
        const std::string arguments = filter.arguments;
        page.macro("It Cm " + Mdoc::argument(filter.name) +
                   (arguments.empty() ? "" : " Ar " + Mdoc::argument(arguments)));
        page.text(filter.summary);
    }
    page.macro("El");
}

void printAttributes(Mdoc& page, std::span<const MoAttribute> attributes)
{
    for (const auto& attribute : attributes)
    {
        page.macro("It Va " + Mdoc::argument(attribute.name));
        page.text(filem::typeName(attribute) + ": " + std::string(attribute.help));
        if (!attribute.members.empty())
        {
            page.macro("Bl -tag -width Ds -compact");
            printAttributes(page, attribute.members);
            page.macro("El");
        }
    }
}

void printClass(Mdoc& page, const MoClass& moClass)
{
    page.macro("It Cm " + Mdoc::argument(moClass.name));
    page.text(sentence(moClass.help));
    if (!moClass.children.empty())
    {
        std::string children;
        for (const auto child : moClass.children)
        {
            children += (children.empty() ? "" : ", ") + std::string(child);
        }
        page.text("Below it stand objects of: " + children + ".");
    }
    if (moClass.attributes.empty() && moClass.actions.empty())
    {
        return;
    }
    page.macro("Bl -tag -width Ds -compact");
    printAttributes(page, moClass.attributes);
    for (const auto& action : moClass.actions)
    {
        page.macro("It Fn " + Mdoc::argument(action.name) +
                   (action.parameter.empty() ? "" : " " + Mdoc::argument(action.parameter)));
        page.text(action.help);
    }
    page.macro("El");
}

void printClasses(Mdoc& page)
{
    page.subsection("Classes of objects");
    page.text("With their attributes and actions:");
    page.macro("Bl -tag -width Ds");
    for (const auto& moClass : moClasses())
    {
        printClass(page, moClass);
    }
    page.macro("El");
}

void printPlaces(Mdoc& page)
{
    page.subsection("Places");
    page.text("A place is a path of names,");
    page.macro("Ql logs/a.log ,");
    page.text("or a distinguished name, from below the root,");
    page.macro("Ql FileGroup=logs,FileInformation=a.log ,");
    page.text("or whole,");
    page.macro("Ql ManagedElement=1,SystemFunctions=1,FileM=1,FileGroup=logs .");
    page.text(
        "A FileGroup is a directory, a FileInformation a file in a directory. A path that begins with a "
        "slash begins at the root; another one begins where the session is.");
}

void printSessions(Mdoc& page)
{
    page.subsection("Transactions");
    page.text(
        "A command of the command line is a transaction of its own: all that it asks for is done, or it is "
        "refused and nothing is. In a session, commands that change something stage it. Listings show what "
        "is staged; nothing happens on disk before it is committed. What isn't committed at the end of "
        "the session is dropped.");
    page.paragraph();
    page.text("A script has commands in lines or between semicolons, quoted as in a POSIX shell. A");
    page.macro("Sq #");
    page.text(
        "begins a comment. The first command that fails ends the script and drops what is staged, unless the "
        "line begins with a");
    page.macro("Sq - .");
}

void printExitStatus(Mdoc& page)
{
    page.section("EXIT STATUS");
    page.macro("Bl -tag -width Ds -compact");
    for (const auto& [code, meaning] : filem::EXIT_CODES)
    {
        page.macro("It " + std::to_string(static_cast<int>(code)));
        page.text(meaning);
    }
    page.macro("El");
}

} // namespace

void printCommandManual(std::ostream& out)
{
    Mdoc page(out, "filem", 1);
    page.section("NAME");
    page.macro("Nm filem");
    page.macro("Nd show and change a tree of directories as managed objects");
    printSynopsis(page);
    page.section("DESCRIPTION");
    page.macro("Nm");
    page.text("shows a tree of directories to an operator as the managed objects that a host's management "
              "framework "
              "sees, and changes it by transactions.");
    page.text("Without a command it opens a session at a terminal and runs the commands of standard input "
              "otherwise. Data goes to standard output, all else to standard error.");
    page.paragraph();
    page.text("The options in front of a command:");
    page.macro("Bl -tag -width Ds");
    for (const auto& option : globalSyntax().options)
    {
        printOption(page, option);
    }
    page.macro("El");
    page.paragraph();
    page.text("Each command takes");
    page.macro("Fl -help");
    page.text("too.");
    page.paragraph();
    page.text("Without");
    page.macro("Fl -root");
    page.text("and");
    page.macro("Fl -config");
    page.text("the root is what");
    page.macro("Ql zolea file-system internalRoot");
    page.text("prints.");
    printPlaces(page);
    printSessions(page);
    printVerbs(page);
    printFilters(page);
    printClasses(page);
    page.section("ENVIRONMENT");
    page.text("See");
    page.reference("filem-config", 5, ".");
    printExitStatus(page);
    page.section("EXAMPLES");
    page.text("What removing old cores would do, and doing it:");
    page.verbatim("$ filem --root /var/node/files rm -n --matching 'core\\..*' cores\n"
                  "$ filem --root /var/node/files rm --yes --matching 'core\\..*' cores\n");
    page.paragraph();
    page.text("Two changes in one transaction:");
    page.verbatim("$ filem --root /var/node/files -c 'mkdir logs/new; rmtree logs/old; commit'\n");
    page.section("SEE ALSO");
    page.reference("filem-config", 5);
}

} // namespace zolhost::manual
