#pragma once

#include "filem/Session.h"

#include <iosfwd>

namespace zolhost::filem
{

/// Runs the commands of a text, one a line, until its end or `quit`. The first that fails aborts what isn't
/// committed; throws CommandFailure, which names the line.
void runScript(Session& session, std::istream& text, std::ostream& err);

/// The same for an operator at a terminal: prompts for each line, and goes on after a failure.
void runTerminal(Session& session, std::istream& text, std::ostream& err);

} // namespace zolhost::filem
