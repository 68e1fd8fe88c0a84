#include "FileMTransaction.h"

#include <benchmark/benchmark.h>

namespace
{

using ZolFileManagement::FileMTransaction;

constexpr const char* plainName = "measurements-2026-11-21.log";
constexpr const char* oddName = "a=b,c+d#e.log";

void encodeFileName(benchmark::State& state, const char* name)
{
    for ([[maybe_unused]] auto _ : state)
    {
        std::string value = name;
        FileMTransaction::alignNameWithQuestionMark(value);
        benchmark::DoNotOptimize(value);
    }
}

void encodeDirectoryName(benchmark::State& state, const char* name)
{
    for ([[maybe_unused]] auto _ : state)
    {
        std::string value = name;
        FileMTransaction::alignFileGroupWith3gppRdn(value);
        benchmark::DoNotOptimize(value);
    }
}

void decodeDirectoryName(benchmark::State& state, const char* value)
{
    for ([[maybe_unused]] auto _ : state)
    {
        std::string name = value;
        FileMTransaction::reAlignWith3gppRdn(name);
        benchmark::DoNotOptimize(name);
    }
}

} // namespace

BENCHMARK_CAPTURE(encodeFileName, plain, plainName);
BENCHMARK_CAPTURE(encodeFileName, odd, oddName);
BENCHMARK_CAPTURE(encodeDirectoryName, plain, plainName);
BENCHMARK_CAPTURE(encodeDirectoryName, odd, oddName);
BENCHMARK_CAPTURE(decodeDirectoryName, plain, plainName);
BENCHMARK_CAPTURE(decodeDirectoryName, escaped, "a\\2Bb");
