#include "rig/AllWays.h"
#include "rig/RowCalls.h"
#include "rig/Rows.h"
#include "support/MemoryFolder.h"

#include <gtest/gtest.h>

namespace
{

using namespace zolbench;

constexpr std::size_t items = 1000;

// For what is asked once: to open the directory, to read its entries by the buffer, the marks of its
// protection.
#ifdef __SANITIZE_ADDRESS__
constexpr double onceAtMost = 60; // the sanitizers look through pipes whether memory can be read
#else
constexpr double onceAtMost = 20;
#endif

std::string toText(const SystemCalls& calls)
{
    std::string text;
    for (const auto& [number, count] : calls)
    {
        text += systemCallName(number) + ' ' + std::to_string(count) + '\n';
    }
    return text;
}

TEST(SystemCallGoals, AreKeptByTheLibraryInEachRow)
{
    const Stage stage(zoltest::memoryFolder());
    const Library library(Library::defaultFile(), stage.root());
    const Ways ways = allWays(library, stage.root());
    for (const RowMaker& maker : rowMakers(stage))
    {
        SCOPED_TRACE(maker.work);
        const Row row = maker.make(items);
        const auto calls = systemCallsOf(row, *ways.front());
        const double atMost = row.goal.calls.value_or(0) * items + onceAtMost;
        EXPECT_LE(static_cast<double>(total(calls)), atMost) << toText(calls);
    }
}

} // namespace
