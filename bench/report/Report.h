#pragma once

#include "other/Listings.h"
#include "report/Check.h"
#include "report/Outcome.h"

#include <map>
#include <nlohmann/json_fwd.hpp>

namespace zolbench
{

/// A case of Google Benchmark.
struct InnerCase
{
    std::string name;
    double nanoseconds;
};

/// All that a run measured.
struct Report
{
    std::string surroundings; ///< the machine and what else it did, in a line
    std::vector<Outcome> outcomes;
    std::vector<Check> checks;
    std::vector<Listing> listings;
    std::vector<InnerCase> innerCases;
    std::vector<std::string> failures; ///< what couldn't be measured, and why
};

/// The tables in Markdown by name, without those that nothing was measured for.
std::map<std::string, std::string> tablesOf(const Report& report);

nlohmann::json toJson(const Report& report);

} // namespace zolbench
