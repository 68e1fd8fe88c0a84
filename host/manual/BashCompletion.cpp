#include "manual/Pages.h"
#include "manual/ShellText.h"
#include "manual/Syntax.h"

#include <map>
#include <ostream>

namespace zolhost::manual
{

namespace
{

constexpr const char* WORDS =
    R"BASH(# Completion of filem for bash. Made from the options and verbs that filem knows.

# Sets plain to what a word stands for, open to the quote that is open at its end, if any, and opened to what
# stands before that. Variables count, commands are not run.
_filem_plain() # WORD
{
    local rest=$1 character
    plain='' open='' opened=''
    if [[ $rest == '~' || $rest == '~/'* ]]; then
        plain=$HOME rest=${rest:1}
    fi
    while [[ -n $rest ]]; do
        character=${rest:0:1}
        if [[ $open != "'" && $rest =~ ^\$\{?([A-Za-z_][A-Za-z0-9_]*)\}? ]]; then
            plain+=${!BASH_REMATCH[1]} rest=${rest#"${BASH_REMATCH[0]}"}
            continue
        fi
        rest=${rest:1}
        if [[ $character == "$open" ]]; then
            open=''
        elif [[ -z $open && $character == [\'\"] ]]; then
            open=$character opened=$plain
        elif [[ $open != "'" && $character == '\' ]]; then
            # in double quotes it stays before most characters
            [[ -n $open && ${rest:0:1} != [\"\\\$\`] ]] && plain+='\'
            plain+=${rest:0:1} rest=${rest:1}
        else
            plain+=$character
        fi
    done
}

# Sets words to the words up to the cursor, and piece to what of the last one readline is going to replace: it
# ends words also at = and :, which belong to names here.
_filem_split()
{
    local rest=${COMP_LINE:0:COMP_POINT} i
    words=()
    for ((i = 0; i <= COMP_CWORD; i++)); do
        if [[ $i -eq 0 || $rest == [[:space:]]* ]]; then
            rest=${rest#"${rest%%[![:space:]]*}"}
            words+=('')
        fi
        piece=${COMP_WORDS[i]}
        ((i < COMP_CWORD)) || piece=$rest
        words[-1]+=$piece
        rest=${rest#"$piece"}
    done
    [[ $piece != [=:] ]] || piece=''
}

# Takes those of COMPREPLY that begin with the current word, as they must stand in its place.
_filem_reply()
{
    local plain open opened replaced candidate escape
    local -a kept=()
    _filem_plain "${words[-1]%"$piece"}"
    replaced=$plain
    _filem_plain "${words[-1]}"
    [[ -z $open ]] || replaced=$opened
    for candidate in "${COMPREPLY[@]}"; do
        if [[ $candidate == "$plain"* ]]; then
            kept+=("${candidate#"$replaced"}")
            # what goes on behind it needs no blank
            [[ $candidate != *[/=,] ]] || compopt -o nospace 2>/dev/null
        fi
    done
    COMPREPLY=()
    case $open in
        "'") escape="s/'/'\\\\''/g" ;;
        '"') escape='s/["$`\\]/\\&/g' ;;
        *) escape='s/[^[:alnum:]_.\/=,:@%+-]/\\&/g' ;;
    esac
    ((${#kept[@]} == 0)) || mapfile -t COMPREPLY < <(printf '%s\n' "${kept[@]}" | sed "$escape")
}

# Completes a value of kind.
_filem_value()
{
    local plain open opened i
    _filem_plain "${words[-1]}"
    local option=''
    if [[ $plain == --*=* ]]; then
        option=${plain%%=*}= plain=${plain#*=}
    fi
    case $kind in
        FILE) mapfile -t COMPREPLY < <(compgen -f -- "$plain") ;;
        DIR) mapfile -t COMPREPLY < <(compgen -d -- "$plain") ;;
        *) mapfile -t COMPREPLY < <(compgen -W "$kind" -- "$plain") ;;
    esac
    for i in "${!COMPREPLY[@]}"; do
        [[ $kind != @(FILE|DIR) || ! -d ${COMPREPLY[i]} ]] || COMPREPLY[i]+=/
    done
    COMPREPLY=("${COMPREPLY[@]/#/"$option"}")
    _filem_reply
}

)BASH";

constexpr const char* MAIN = R"BASH(
_filem()
{
    local -a words asked
    local piece kind plain open opened verb='' i last
    COMPREPLY=()
    _filem_split
    last=$((${#words[@]} - 1))
    _filem_plain "${words[0]}"
    asked=("$plain")
    for ((i = 1; i < last; i++)); do
        if [[ ${words[i]} != -* ]]; then
            verb=${words[i]}
            break
        fi
        if _filem_takes '' "${words[i]}"; then
            if ((i + 1 == last)); then
                _filem_value
                return
            fi
            _filem_plain "${words[i + 1]}"
            ! _filem_says_which_tree "${words[i]}" || asked+=("${words[i]}" "$plain")
            ((++i))
        elif _filem_says_which_tree "${words[i]%%=*}"; then
            _filem_plain "${words[i]}"
            asked+=("$plain")
        fi
    done

    local current=${words[-1]}
    if [[ -n $verb && $i -lt $((last - 1)) ]] && _filem_takes "$verb" "${words[last - 1]}"; then
        _filem_value
    elif [[ $current == --*=* ]] && _filem_takes "$verb" "${current%%=*}"; then
        _filem_value
    elif [[ $current == -* && " ${words[*]:i:last-i} " != *' -- '* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_filem_options "$verb")")
        _filem_reply
    elif [[ -z $verb ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$(_filem_verbs)")
        _filem_reply
    else
        asked+=(__complete --)
        for ((; i <= last; i++)); do
            _filem_plain "${words[i]}"
            asked+=("$plain")
        done
        # a name that can't stand in a line comes in quotes and is left out
        mapfile -t COMPREPLY < <("${asked[@]}" 2>/dev/null | grep -v "^\$'")
        _filem_reply
    fi
}

complete -F _filem filem
)BASH";

void printVerbs(std::ostream& out)
{
    std::vector<std::string> names;
    for (const auto* const verb : verbsOfCommandLine())
    {
        for (const auto& name : typedNamesOf(*verb))
        {
            names.push_back(name);
        }
    }
    out << "_filem_verbs()\n{\n    echo " << joined(names, " ") << "\n}\n\n";
}

std::string optionNames(const Syntax& syntax)
{
    std::vector<std::string> names;
    for (const auto& option : syntax.options)
    {
        names.insert(names.end(), option.names.begin(), option.names.end());
    }
    return joined(names, " ");
}

void printOptions(std::ostream& out)
{
    out << "# Of a verb, or those in front of a command.\n_filem_options() # [VERB]\n{\n    case $1 in\n"
        << "        '') echo " << singleQuoted(optionNames(globalSyntax())) << " ;;\n";
    for (const auto* const verb : verbsOfCommandLine())
    {
        out << "        " << joined(typedNamesOf(*verb), " | ") << ") echo "
            << singleQuoted(optionNames(syntaxOf(*verb))) << " ;;\n";
    }
    out << "    esac\n}\n\n";
}

/// By what they take, the verbs with their options that take it.
using Takers = std::map<std::string, std::vector<std::string>>;

void addTakers(Takers& takers, const std::string& verb, const Syntax& syntax)
{
    for (const auto& option : syntax.options)
    {
        for (const auto& name : option.names)
        {
            if (!option.value.empty())
            {
                std::string pattern = singleQuoted(verb);
                pattern.insert(pattern.size() - 1, " " + name);
                takers[shellKindOf(option)].push_back(pattern);
            }
        }
    }
}

void printTakers(std::ostream& out)
{
    Takers takers;
    addTakers(takers, "", globalSyntax());
    for (const auto* const verb : verbsOfCommandLine())
    {
        for (const auto& name : typedNamesOf(*verb))
        {
            addTakers(takers, name, syntaxOf(*verb));
        }
    }
    out << "# Whether an option takes a value; sets kind to FILE, DIR or all values that there are.\n"
           "_filem_takes() # VERB OPTION\n{\n    case \"$1 $2\" in\n";
    for (const auto& [kind, options] : takers)
    {
        out << "        " << joined(options, " | ") << ") kind=" << singleQuoted(kind) << " ;;\n";
    }
    out << "        *) return 1 ;;\n    esac\n}\n\n"
           "_filem_says_which_tree() # OPTION\n{\n    [[ $1 == @("
        << joined(treeOptions(), "|") << ") ]]\n}\n";
}

} // namespace

void printBashCompletion(std::ostream& out)
{
    out << WORDS;
    printVerbs(out);
    printOptions(out);
    printTakers(out);
    out << MAIN;
}

} // namespace zolhost::manual
