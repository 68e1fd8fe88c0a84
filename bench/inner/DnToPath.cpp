#include "Worker.h"

#include <benchmark/benchmark.h>

namespace
{

void convertDnToPath(benchmark::State& state)
{
    zolbench::Worker worker;
    std::string dn = zolbench::Worker::directoryDn;
    for (auto level = 1; level < state.range(0); ++level)
    {
        dn += ",FileGroup=directory";
    }
    for ([[maybe_unused]] auto _ : state)
    {
        benchmark::DoNotOptimize(worker->convertDnToPath(dn.c_str()));
    }
}

} // namespace

BENCHMARK(convertDnToPath)->Arg(1)->Arg(10)->Arg(100)->ArgName("depth");
