#include "support/RecordedLog.h"

#include <climits>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zol/common/LoggingWrapper.h>

namespace
{

using Zol::LoggingWrapper;
using Call = Zol::LogRecord::Call;
using zoltest::RecordedLog;

void emit(Call call, unsigned int number)
{
    auto& log = LoggingWrapper::instance();
    switch (call)
    {
    case Call::Log:
        log.log_printf("function", number, 1, "text");
        break;
    case Call::Trace:
        log.trace_printf("file", "function", 1, number, "text");
        break;
    case Call::TraceV2:
        log.trace_v2_printf(2, number, "file", "function", 1, "text");
        break;
    }
}

TEST(LogLevel, LetsACallThroughFromItsNumberOnAndTracesFrom8On)
{
    struct Row
    {
        Call call;
        unsigned int number;
        int lowestLevel;
    };
    for (const auto& [call, number, lowestLevel] : std::vector<Row>{
             {Call::Log, 0, 0},
             {Call::Log, 1, 1},
             {Call::Log, 3, 3},
             {Call::Log, 4, 4},
             {Call::Log, 7, 7},
             {Call::Log, 8, 8},
             {Call::Log, 9, 8},
             {Call::Log, UINT_MAX, 8},
             {Call::TraceV2, 0, 0},
             {Call::TraceV2, 3, 3},
             {Call::TraceV2, 4, 4},
             {Call::TraceV2, 7, 7},
             {Call::TraceV2, 8, 8},
             {Call::TraceV2, 14, 8},
             {Call::TraceV2, UINT_MAX, 8},
             {Call::Trace, 0, 8},
             {Call::Trace, 9, 8},
             {Call::Trace, 10, 8},
         })
    {
        for (const int level : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 14, 15, INT_MAX})
        {
            const RecordedLog recorded(level);
            emit(call, number);
            EXPECT_EQ(recorded.calls().size(), level >= lowestLevel ? 1U : 0U)
                << "call " << static_cast<int>(call) << " number " << number << " at level " << level;
        }
    }
}

TEST(LogLevel, IsWhatWasSet)
{
    const RecordedLog recorded(7);
    EXPECT_EQ(LoggingWrapper::instance().get_level(), 7);
    LoggingWrapper::instance().set_level(0);
    EXPECT_EQ(LoggingWrapper::instance().get_level(), 0);
}

TEST(LogLevel, BelowItNoArgumentIsLookedAt)
{
    // formatting would crash
    const auto* const nowhere = reinterpret_cast<const char*>(8);
    const RecordedLog recorded(2);
    auto& log = LoggingWrapper::instance();
    log.log_printf("function", 3, 1, "%s", nowhere);
    log.trace_printf("file", "function", 1, 9, "%s", nowhere);
    log.trace_v2_printf(2, 3, "file", "function", 1, "%s", nowhere);
    EXPECT_THAT(recorded.calls(), testing::IsEmpty());
}

} // namespace
