#pragma once

#include "manual/Syntax.h"

#include <string>
#include <string_view>
#include <vector>

/// What the completions of several shells are made of.
namespace zolhost::manual
{

std::string joined(const std::vector<std::string>& words, std::string_view separator);

/// In single quotes, for bash and zsh.
std::string singleQuoted(std::string_view text);

/// Those that can be typed in a shell without quotes.
std::vector<std::string> typedNamesOf(const filem::VerbDescription& verb);

/// Names of the options that take a value.
std::vector<std::string> valueOptions(const Syntax& syntax);

/// Options in front of a command without which filem wouldn't find the tree or see it as the command will.
std::vector<std::string> treeOptions();

/// What is given to the shell of a value's kind: FILE, DIR, its choices between blanks, or nothing.
std::string shellKindOf(const Parameter& option);

} // namespace zolhost::manual
