#include "manual/Pages.h"
#include "manual/ShellText.h"
#include "manual/Syntax.h"

#include <algorithm>
#include <ostream>

namespace zolhost::manual
{

namespace
{

constexpr const char* ASK = R"ZSH(#compdef filem
# Completion of filem for zsh. Made from the options and verbs that filem knows.

# What a word stands for. Variables count, commands are not run.
_filem_plain() # WORD
{
    local word=$1 MATCH
    local -a match mbegin mend
    if [[ $word == '~' || $word == '~/'* ]]; then
        word=${(q)HOME}${word#'~'}
    elif [[ $word =~ '^"?\$\{?([A-Za-z_][A-Za-z0-9_]*)\}?' ]]; then
        # without the quotes, which may end anywhere behind it
        word=${(qP)match[1]}${${word#$MATCH}//\"/}
    fi
    REPLY=${(Q)word}
}

# Places and whatever else depends on the tree, from filem itself.
_filem_ask()
{
    local -a asked found
    local word REPLY
    asked=("${filem_call[@]}" __complete --)
    for word in "${(@)words[1,CURRENT-1]}"; do
        _filem_plain "$word"
        asked+=("$REPLY")
    done
    _filem_plain "$PREFIX"
    found=("${(@f)$("${asked[@]}" "$REPLY" 2>/dev/null)}")
    # a name that can't stand in a line comes in quotes and is left out
    found=("${(@)found:#(|\$\'*)}")
    # what goes on behind it needs no blank
    compadd -S '' -- "${(@M)found:#*[/=,]}"
    compadd -- "${(@)found:#*[/=,]}"
}

)ZSH";

/// With the characters quoted that end an explanation or a name.
std::string explanation(std::string_view text)
{
    std::string result;
    for (const char character : text)
    {
        if (character == '[' || character == ']' || character == ':' || character == '\\')
        {
            result += '\\';
        }
        result += character;
    }
    return result;
}

std::string actionOf(const Parameter& option)
{
    const std::string kind = shellKindOf(option);
    if (kind == "FILE")
    {
        return "_files";
    }
    if (kind == "DIR")
    {
        return "_files -/";
    }
    return kind.empty() ? " " : "(" + kind + ")";
}

/// One for each name of an option, as _arguments takes them.
void printOption(std::ostream& out, const Parameter& option)
{
    std::vector<std::string> excluded = option.names;
    excluded.insert(excluded.end(), option.excluded.begin(), option.excluded.end());
    for (const auto& name : option.names)
    {
        std::string specification = "(" + joined(excluded, " ") + ")" + name;
        if (!option.value.empty())
        {
            specification += name.starts_with("--") ? "=" : "+";
        }
        specification += "[" + explanation(option.help) + "]";
        if (!option.value.empty())
        {
            specification += ":" + option.value + ":" + actionOf(option);
        }
        out << "            " << singleQuoted(specification) << " \\\n";
    }
}

void printVerbs(std::ostream& out)
{
    out << "_filem_verbs()\n{\n    local -a verbs=(\n";
    for (const auto* const verb : verbsOfCommandLine())
    {
        for (const auto& name : typedNamesOf(*verb))
        {
            out << "        " << singleQuoted(name + ":" + explanation(verb->summary)) << '\n';
        }
    }
    out << "    )\n    _describe -t commands command verbs\n}\n\n";
}

void printArguments(std::ostream& out)
{
    out << "_filem_arguments()\n{\n    case $words[1] in\n";
    for (const auto* const verb : verbsOfCommandLine())
    {
        out << "    (" << joined(typedNamesOf(*verb), "|") << ")\n        _arguments -s -S \\\n";
        for (const auto& option : syntaxOf(*verb).options)
        {
            printOption(out, option);
        }
        out << "            '*:argument:_filem_ask'\n        ;;\n";
    }
    out << "    esac\n}\n\n";
}

void printMain(std::ostream& out)
{
    const Syntax syntax = globalSyntax();
    const std::vector<std::string> tree = treeOptions();
    std::vector<std::string> others = valueOptions(syntax);
    std::erase_if(others, [&](const auto& name) { return std::ranges::find(tree, name) != tree.end(); });
    out << "_filem()\n{\n"
           "    local curcontext=$curcontext state line REPLY i\n"
           "    local -A opt_args\n"
           "    local -a filem_call\n"
           "    _filem_plain \"$words[1]\"\n"
           "    filem_call=(\"$REPLY\")\n"
           "    for ((i = 2; i < CURRENT; i++)); do\n"
           "        case $words[i] in\n"
        << "        (" << joined(tree, "|")
        << ")\n"
           "            _filem_plain \"$words[i+1]\"\n"
           "            filem_call+=(\"$words[i]\" \"$REPLY\")\n"
           "            ((++i))\n"
           "            ;;\n"
        << "        (" << joined(tree, "=*|")
        << "=*)\n"
           "            _filem_plain \"$words[i]\"\n"
           "            filem_call+=(\"$REPLY\")\n"
           "            ;;\n"
        << "        (" << joined(others, "|")
        << ") ((++i)) ;;\n"
           "        (-*) ;;\n"
           "        (*) break ;;\n"
           "        esac\n"
           "    done\n"
           "    _arguments -C -A '-*' \\\n";
    for (const auto& option : syntax.options)
    {
        printOption(out, option);
    }
    out << "            '1:command:_filem_verbs' \\\n"
           "            '*::argument:_filem_arguments'\n"
           "}\n\n"
           "# it is loaded as the body of _filem, or sourced\n"
           "if [[ $funcstack[1] == _filem ]]; then\n"
           "    _filem \"$@\"\n"
           "else\n"
           "    compdef _filem filem\n"
           "fi\n";
}

} // namespace

void printZshCompletion(std::ostream& out)
{
    out << ASK;
    printVerbs(out);
    printArguments(out);
    printMain(out);
}

} // namespace zolhost::manual
