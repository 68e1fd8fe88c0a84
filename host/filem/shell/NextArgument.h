#pragma once

#include "filem/Verb.h"

#include <string>
#include <vector>

namespace CLI
{
class Option;
}

namespace zolhost::filem
{

/// What a parser takes for the last of some words.
struct NextArgument
{
    const CLI::Option* option = nullptr; ///< whose value it is, or which argument; null if there is none
    std::string glued;                   ///< what stands before the value in the same word: "--level="
    bool mayBeName = false;              ///< of an option
    Words arguments;                     ///< before it, that are no options
};

/// The words are those behind the command, and not empty.
NextArgument nextArgument(CLI::App& parser, const Words& words);

} // namespace zolhost::filem
