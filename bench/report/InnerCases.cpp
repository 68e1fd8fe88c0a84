#include "report/InnerCases.h"

#include <fstream>
#include <nlohmann/json.hpp>

namespace zolbench
{

namespace
{

// Of one item, where a case does several in a turn.
double nanosecondsOf(const nlohmann::json& run)
{
    constexpr double second = 1e9;
    return run.contains("items_per_second") ? second / run.at("items_per_second").get<double>()
                                            : run.at("cpu_time").get<double>();
}

} // namespace

std::vector<InnerCase> readInnerCases(const std::filesystem::path& file)
{
    std::vector<InnerCase> cases;
    const auto written = nlohmann::json::parse(std::ifstream(file));
    for (const auto& run : written.at("benchmarks"))
    {
        const bool isSingle = run.at("run_type") == "iteration" && run.value("repetitions", 1) <= 1;
        const bool isMedian = run.value("aggregate_name", "") == "median";
        if (isSingle || isMedian)
        {
            cases.push_back({run.at("run_name"), nanosecondsOf(run)});
        }
    }
    return cases;
}

} // namespace zolbench
