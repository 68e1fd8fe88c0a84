#include "Worker.h"

#include <benchmark/benchmark.h>

namespace
{

/// The time of a record for the host, made and released.
void makeListingRecords(benchmark::State& state)
{
    zolbench::Worker worker;
    const auto number = static_cast<std::size_t>(state.range(0));
    const std::vector<ZolFileManagement::FileInfo> files(
        number, {"measurements-2026-11-21.log", 4096, "log", "2026-11-21T15:05:00"});
    for ([[maybe_unused]] auto _ : state)
    {
        QenMoAttributeValueResult_3 result{};
        worker->initAttrResult(attrTypeStruct, static_cast<unsigned int>(number), result);
        worker->setAttrFilesResult("", files, result);
        result.releaseCallback(result.container);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(makeListingRecords)->Arg(1)->Arg(1000)->ArgName("files");
