#pragma once

#include <string>

namespace zolhost
{
class Plan;
}

namespace zolhost::filem
{

class Session;

/// Where the operator is and what is staged: "FileM:logs (+2 dirs -14 files)> ".
std::string promptOf(Session& session);

/// How many changes a plan holds.
std::size_t countChanges(const Plan& plan);

} // namespace zolhost::filem
