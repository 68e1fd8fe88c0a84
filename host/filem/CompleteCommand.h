#pragma once

#include "filem/CommandLine.h"

#include <iosfwd>

/// The hidden command that completions of other shells call: __complete -- WORD...
namespace zolhost::filem
{

bool isCompleteCommand(const CommandLine& line);

/// Also if the rest can't be understood.
bool asksForCandidates(const Words& arguments);

/// What the last word can become, one a line.
void printCandidates(const CommandLine& line, std::ostream& out);

/// Whoever types a line wants no failures in it.
void silenceErrors();

} // namespace zolhost::filem
