#pragma once

#include "filem/Session.h"

#include <string>
#include <string_view>
#include <vector>

namespace zolhost::filem
{

/// One command of a line, with the filters that its output goes through.
struct Pipeline
{
    Words command;
    std::vector<Words> filters;
    bool operator==(const Pipeline&) const = default;
};

/// Commands stand between semicolons, filters behind bars. Throws CommandFailure.
std::vector<Pipeline> parseLine(std::string_view line);

/// Throws CommandFailure or Interrupted.
ExitCode runPipeline(Session& session, const Pipeline& pipeline);

/// Runs the commands of a line one after the other, up to the first that fails. The code of the last; Done if
/// there is none. Throws CommandFailure or Interrupted.
ExitCode runLine(Session& session, std::string_view line);

} // namespace zolhost::filem
