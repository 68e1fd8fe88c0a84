#include "Run.h"

#include "other/Memory.h"
#include "other/Neighbours.h"
#include "other/SharedLock.h"
#include "report/Surroundings.h"
#include "report/Table.h"
#include "rig/AllWays.h"
#include "rig/Rows.h"

#include <algorithm>
#include <functional>
#include <iostream>

namespace zolbench
{

namespace
{

// The count is exact, and tracing is slow.
constexpr std::size_t mostTracedItems = 10000;

// Above, only what is held against each other takes turns.
constexpr std::size_t mostItemsOfAll = 100000;
constexpr std::size_t million = 1000000;

std::size_t largestOf(const Options& options)
{
    return *std::max_element(options.items.begin(), options.items.end());
}

CallsByWay countCalls(const RowMaker& maker, const Options& options, const Ways& ways)
{
    const std::size_t items = std::min({mostTracedItems, maker.mostItems, largestOf(options)});
    try
    {
        return callsAnItem(maker.make(items), ways);
    }
    catch (const std::exception& failure)
    {
        std::cerr << maker.work << ": system calls aren't counted: " << failure.what() << '\n';
        return {};
    }
}

Ways waysOf(const Options& options, const Library& library, const Stage& stage)
{
    Ways ways = allWays(library, stage.root());
    std::erase_if(ways, [&](const auto& way) {
        return !options.ways.empty() &&
               std::find(options.ways.begin(), options.ways.end(), way->name()) == options.ways.end();
    });
    return ways;
}

std::vector<std::size_t> sizesOf(const Options& options)
{
    std::vector<std::size_t> sizes = options.items;
    if (options.large)
    {
        sizes.push_back(million);
    }
    return sizes;
}

/// What fails alone mustn't lose hours of measuring.
void attempt(const std::string& name, Report& report, const std::function<void()>& measure)
{
    std::cerr << name << '\n';
    try
    {
        measure();
    }
    catch (const std::exception& failure)
    {
        report.failures.push_back(name + ": " + failure.what());
    }
}

void measureRow(const RowMaker& maker, const Options& options, const Stage& stage, const Ways& ways,
                Report& report)
{
    const CallsByWay calls = countCalls(maker, options, ways);
    for (const std::size_t items : sizesOf(options))
    {
        if (items > maker.mostItems)
        {
            continue;
        }
        const Row row = maker.make(items);
        const std::size_t waysInTurn =
            items > mostItemsOfAll ? std::min(waysOfLargeRows, ways.size()) : ways.size();
        attempt(maker.work + ", " + std::to_string(items), report, [&] {
            const RowTimes times = measure(row, {ways.data(), waysInTurn}, options.repetitions);
            report.outcomes.push_back({row.work, items, times, calls, row.goal});
        });
        if (items > mostItemsOfAll && !row.task.path.empty())
        {
            stage.empty(row.task); // a file system in memory has room for three million entries or so
        }
    }
}

template<class Value>
void append(std::vector<Value>& values, std::vector<Value> more)
{
    std::move(more.begin(), more.end(), std::back_inserter(values));
}

void measureOthers(const Options& options, const Stage& stage, const Library& library, Report& report)
{
    const auto measureIfWanted = [&](const std::string& name, const std::function<void()>& measure) {
        if (options.wants(name))
        {
            attempt(name, report, measure);
        }
    };
    measureIfWanted("threads",
                    [&] { append(report.checks, checkSharedLock(stage, library, options.repetitions)); });
    measureIfWanted("memory", [&] {
        std::vector<std::size_t> sizes{largestOf(options)};
        if (options.large)
        {
            sizes.push_back(million);
        }
        append(report.checks, checkMemory(stage, options.library, sizes));
    });
    measureIfWanted("neighbours",
                    [&] { report.checks.push_back(checkNeighbours(stage, library, options.repetitions)); });
    for (const std::size_t items : options.items)
    {
        measureIfWanted("filem, " + std::to_string(items), [&] {
            append(report.listings, measureListings(stage, options.filem, items, options.repetitions));
        });
    }
}

} // namespace

bool Options::wants(const std::string& name) const
{
    return only.empty() || std::any_of(only.begin(), only.end(), [&](const std::string& part) {
               return name.find(part) != std::string::npos;
           });
}

Report run(const Options& options)
{
    const double loadBefore = loadAverage();
    const Stage stage(options.folder);
    const Library library(options.library, stage.root());
    const Ways ways = waysOf(options, library, stage);
    Report report;
    for (const RowMaker& maker : rowMakers(stage))
    {
        if (options.wants(maker.work))
        {
            measureRow(maker, options, stage, ways, report);
        }
    }
    measureOthers(options, stage, library, report);
    report.surroundings = machine() + "; load average " + figure(loadBefore) + " before and " +
                          figure(loadAverage()) + " after; medians of " +
                          std::to_string(options.repetitions) + " repetitions.";
    return report;
}

void printCalls(const Options& options, std::size_t items)
{
    const Stage stage(options.folder);
    const Library library(options.library, stage.root());
    const Ways ways = allWays(library, stage.root());
    for (const RowMaker& maker : rowMakers(stage))
    {
        if (!options.wants(maker.work))
        {
            continue;
        }
        std::cout << maker.work << '\n';
        const Row row = maker.make(std::min(items, maker.mostItems));
        for (const auto& [number, count] : systemCallsOf(row, *ways.front()))
        {
            std::cout << "    " << systemCallName(number) << ' ' << count << '\n';
        }
    }
}

} // namespace zolbench
