#include "NonComittedData.h"

#include <benchmark/benchmark.h>
#include <vector>

namespace
{

using ZolFileManagement::NonComittedData;

std::vector<Poco::Path> directories(std::size_t number, std::size_t depth)
{
    std::vector<Poco::Path> paths;
    Poco::Path last;
    for (std::size_t i = 0; i < number; ++i)
    {
        const std::string name = std::to_string(number + i);
        last = i % depth == 0 ? Poco::Path("/tree/directories/").pushDirectory(name)
                              : Poco::Path(last).pushDirectory("d");
        paths.push_back(last);
    }
    return paths;
}

/// The time of one insertion among so many, each directory in the one before it to such a depth.
void insertCreatedDirectories(benchmark::State& state)
{
    const auto number = static_cast<std::size_t>(state.range(0));
    const auto paths = directories(number, static_cast<std::size_t>(state.range(1)));
    for ([[maybe_unused]] auto _ : state)
    {
        NonComittedData changes;
        for (const Poco::Path& path : paths)
        {
            changes.addCreatedDir(path);
        }
        benchmark::DoNotOptimize(changes);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void findCreatedDirectory(benchmark::State& state)
{
    const auto number = static_cast<std::size_t>(state.range(0));
    const auto paths = directories(number, static_cast<std::size_t>(state.range(1)));
    NonComittedData changes;
    for (const Poco::Path& path : paths)
    {
        changes.addCreatedDir(path);
    }
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state)
    {
        benchmark::DoNotOptimize(changes.isDirCreated(paths[next]));
        next = (next + 1) % paths.size();
    }
}

} // namespace

BENCHMARK(insertCreatedDirectories)->Args({10000, 1})->Args({10000, 100})->ArgNames({"number", "depth"});
BENCHMARK(findCreatedDirectory)->Args({10000, 1})->Args({10000, 100})->ArgNames({"number", "depth"});
