#include "rig/AllWays.h"
#include "rig/RowCalls.h"
#include "rig/Rows.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>
#include <map>

namespace
{

using namespace zolbench;

constexpr std::uint64_t items = 1000;

// For what is asked once: to open the directory, to read its entries by the buffer, the marks of its
// protection.
#ifdef __SANITIZE_ADDRESS__
constexpr std::uint64_t onceAtMost = 60; // the sanitizers look through pipes whether memory can be read
#else
constexpr std::uint64_t onceAtMost = 20;
#endif

// What each item may cost.
const std::map<std::string, std::uint64_t> bounds{
    {"browse", 2},
    {"count", 2},
    {"`files`", 4},
    {"create flat and commit", 7},
    {"commit alone, created flat", 6},
    {"create in chains of 100 and commit", 7},
    {"create in chains of 1,000 and commit", 7},
    {"delete and commit", 8},
    {"`removeFile` and commit", 8},
    {"delete check, a directory", 18},
    {"`existsMo`", 2},
    {"`size`", 3},
    {"empty transaction", 0},
};

std::string toText(const SystemCalls& calls)
{
    std::string text;
    for (const auto& [number, count] : calls)
    {
        text += systemCallName(number) + ' ' + std::to_string(count) + '\n';
    }
    return text;
}

TEST(SystemCallBounds, AreKeptByTheLibraryInEachRow)
{
    const Stage stage(zoltest::memoryFolder());
    const Library library(Library::defaultFile(), stage.root());
    const Ways ways = allWays(library, stage.root());
    for (const RowMaker& maker : rowMakers(stage))
    {
        SCOPED_TRACE(maker.work);
        const auto calls = systemCallsOf(maker.make(items), *ways.front());
        EXPECT_LE(total(calls), bounds.at(maker.work) * items + onceAtMost) << toText(calls);
    }
}

} // namespace
