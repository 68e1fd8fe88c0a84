#include "rig/Timing.h"

#include <algorithm>
#include <chrono>
#include <optional>

namespace zolbench
{

namespace
{

std::optional<double> measureOnce(const Row& row, Way& way)
{
    using Clock = std::chrono::steady_clock;
    try
    {
        row.prepare(way);
        const auto begin = Clock::now();
        (way.*row.perform)(row.task, nullptr);
        const std::chrono::duration<double, std::nano> time = Clock::now() - begin;
        return time.count() / static_cast<double>(row.task.items.size());
    }
    catch (const NotOffered&)
    {
        return {};
    }
}

} // namespace

Times measure(const Row& row, const Ways& ways, std::size_t repetitions)
{
    Times times;
    for (std::size_t repetition = 0; repetition < repetitions; ++repetition)
    {
        for (std::size_t i = 0; i < ways.size(); ++i)
        {
            Way& way = *ways[(i + repetition) % ways.size()];
            if (const auto time = measureOnce(row, way))
            {
                times[way.name()].push_back(*time);
            }
        }
    }
    return times;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

double ratio(const Times& times, const std::string& way, const std::string& yardstick)
{
    const auto own = times.find(way);
    const auto other = times.find(yardstick);
    if (own == times.end() || other == times.end())
    {
        return 0;
    }
    std::vector<double> ratios;
    std::transform(own->second.begin(), own->second.end(), other->second.begin(), std::back_inserter(ratios),
                   std::divides<>());
    return median(std::move(ratios));
}

} // namespace zolbench
