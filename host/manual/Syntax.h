#pragma once

#include "filem/Verb.h"

#include <string>
#include <vector>

namespace zolhost::manual
{

/// An option or an argument, as the parser that takes it describes it.
struct Parameter
{
    std::vector<std::string> names;    ///< of an option with dashes, short ones first; of an argument one
    std::string value;                 ///< what kind of value it takes, e.g. PLACE; empty for a flag
    std::vector<std::string> choices;  ///< all values that there are; empty if others do too
    std::vector<std::string> excluded; ///< options that it can't stand beside
    std::string help;
    bool isRequired = false;
    bool isRepeated = false;
};

struct Syntax
{
    std::vector<Parameter> options;
    std::vector<Parameter> arguments;
};

/// Of the options in front of a command.
Syntax globalSyntax();

Syntax syntaxOf(const filem::VerbDescription& verb);

/// Its name, and its alias if it has one.
std::vector<std::string> namesOf(const filem::VerbDescription& verb);

/// Verbs that can be asked for on a command line, which is a session of its own.
std::vector<const filem::VerbDescription*> verbsOfCommandLine();

} // namespace zolhost::manual
