#include "rig/Timing.h"

#include "rig/ProcessorClock.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <iterator>
#include <optional>
#include <random>

namespace zolbench
{

namespace
{

struct Sample
{
    double processor;
    double wall;
};

template<class Clock>
double nanosecondsSince(std::chrono::time_point<Clock> begin)
{
    return std::chrono::duration<double, std::nano>(Clock::now() - begin).count();
}

std::optional<Sample> measureOnce(const Row& row, Way& way)
{
    try
    {
        row.prepare(way);
        const auto begin = std::chrono::steady_clock::now();
        const auto processorBegin = ProcessorClock::now();
        (way.*row.perform)(row.task, nullptr);
        const double processor = nanosecondsSince(processorBegin);
        const double wall = nanosecondsSince(begin);
        const auto items = static_cast<double>(row.task.items.size());
        return Sample{processor / items, wall / items};
    }
    catch (const NotOffered&)
    {
        return {};
    }
}

} // namespace

RowTimes measure(const Row& row, std::span<const std::unique_ptr<Way>> ways, std::size_t repetitions)
{
    RowTimes times;
    std::vector<Way*> order;
    std::transform(ways.begin(), ways.end(), std::back_inserter(order),
                   [](const auto& way) { return way.get(); });
    std::minstd_rand random(std::random_device{}());
    for (std::size_t repetition = 0; repetition < repetitions; ++repetition)
    {
        std::shuffle(order.begin(), order.end(), random);
        for (Way* way : order)
        {
            if (const auto sample = measureOnce(row, *way))
            {
                times.processor[way->name()].push_back(sample->processor);
                times.wall[way->name()].push_back(sample->wall);
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
