#include "Worker.h"

#include <benchmark/benchmark.h>

namespace
{

void search(benchmark::State& state, const std::string& name)
{
    zolbench::Worker worker;
    const std::string dn = zolbench::Worker::directoryDn + ",FileInformation=" + name;
    for ([[maybe_unused]] auto _ : state)
    {
        std::string found = dn;
        benchmark::DoNotOptimize(worker->replace3gppIllegalChars(found));
    }
}

} // namespace

// What is there is named a=b.
BENCHMARK_CAPTURE(search, found_as_it_is, "a=b");
BENCHMARK_CAPTURE(search, found_at_the_fourth_probe, "a?\?b");
BENCHMARK_CAPTURE(search, missing_without_question_marks, "c");
BENCHMARK_CAPTURE(search, missing_with_question_marks, "c?\?d");
