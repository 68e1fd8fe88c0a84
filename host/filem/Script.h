#pragma once

#include "filem/Session.h"

#include <iosfwd>

namespace zolhost::filem
{

/// Runs the commands of a text, line after line, until its end or `quit`. The first that fails aborts what
/// isn't committed; throws CommandFailure, which names the line. A line with a dash in front may fail. With
/// `keepsGoing` all may: each failure is told, and the code is that of the first. What isn't committed at the
/// end is dropped, and that is a failure.
ExitCode runScript(Session& session, std::istream& text, bool keepsGoing);

} // namespace zolhost::filem
