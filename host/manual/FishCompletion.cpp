#include "manual/Pages.h"
#include "manual/ShellText.h"
#include "manual/Syntax.h"

#include <ostream>

namespace zolhost::manual
{

namespace
{

/// In single quotes, in which fish knows escapes.
std::string fishQuoted(std::string_view text)
{
    std::string quoted = "'";
    for (const char character : text)
    {
        if (character == '\'' || character == '\\')
        {
            quoted += '\\';
        }
        quoted += character;
    }
    return quoted + "'";
}

void printFunctions(std::ostream& out)
{
    const std::vector<std::string> tree = treeOptions();
    out << R"FISH(# Completion of filem for fish. Made from the options and verbs that filem knows.

# Where among the words the command stands. Fails if there is none yet.
function __filem_command_at
    set -l words (commandline -opc)
    set -l i 2
    while test $i -le (count $words)
        switch $words[$i]
            case )FISH"
        << joined(valueOptions(globalSyntax()), " ") << R"FISH(
                set i (math $i + 2)
            case '-*'
                set i (math $i + 1)
            case '*'
                echo $i
                return 0
        end
    end
    return 1
end

function __filem_needs_command
    not __filem_command_at >/dev/null
end

function __filem_has_command
    __filem_command_at >/dev/null
end

function __filem_command_is
    set -l at (__filem_command_at); or return 1
    set -l words (commandline -opc)
    contains -- $words[$at] $argv
end

# What a word stands for. Variables count, commands are not run.
function __filem_plain
    set -l parts (string match -r '^\$([A-Za-z_][A-Za-z0-9_]*)(.*)$' -- $argv[1])
    if set -q parts[2]
        set -l name $parts[2]
        echo -- "$$name$parts[3]"
    else
        string replace -r '^~(?=/|$)' -- $HOME $argv[1]
    end
end

# Places and whatever else depends on the tree, from filem itself.
function __filem_ask
    set -l at (__filem_command_at); or return
    set -l words (commandline -opc)
    set -l call (__filem_plain $words[1])
    for i in (seq 2 (math $at - 1))
        switch $words[$i]
            case )FISH"
        << joined(tree, " ") << R"FISH(
                set -a call $words[$i] (__filem_plain $words[(math $i + 1)])
            case )FISH"
        << "'" << joined(tree, "=*' '") << "=*'"
        << R"FISH(
                set -a call $words[$i]
        end
    end
    set -l token (commandline -ct)
    # a quote that is still open can't be taken away with what it quotes
    set -l current (string unescape -- $token; or string replace -r '^["\']' '' -- $token)
    # a name that can't stand in a line comes in quotes and is left out
    $call __complete -- $words[$at..-1] "$current" 2>/dev/null | string match -v -- '$\'*'
end

complete -c filem -f
complete -c filem -n __filem_has_command -a '(__filem_ask)'
)FISH";
}

void printOption(std::ostream& out, const std::string& condition, const Parameter& option)
{
    out << "complete -c filem -n " << fishQuoted(condition);
    for (const auto& name : option.names)
    {
        out << (name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1));
    }
    if (!option.value.empty())
    {
        const std::string kind = shellKindOf(option);
        if (kind == "FILE")
        {
            out << " -rF";
        }
        else if (kind == "DIR")
        {
            out << " -xa '(__fish_complete_directories (commandline -ct))'";
        }
        else
        {
            out << " -x" << (kind.empty() ? "" : "a " + fishQuoted(kind));
        }
    }
    out << " -d " << fishQuoted(option.help) << '\n';
}

} // namespace

void printFishCompletion(std::ostream& out)
{
    printFunctions(out);
    for (const auto& option : globalSyntax().options)
    {
        printOption(out, "__filem_needs_command", option);
    }
    for (const auto* const verb : verbsOfCommandLine())
    {
        const auto names = typedNamesOf(*verb);
        for (const auto& name : names)
        {
            out << "complete -c filem -n __filem_needs_command -a " << name << " -d "
                << fishQuoted(verb->summary) << '\n';
        }
        for (const auto& option : syntaxOf(*verb).options)
        {
            printOption(out, "__filem_command_is " + joined(names, " "), option);
        }
    }
}

} // namespace zolhost::manual
