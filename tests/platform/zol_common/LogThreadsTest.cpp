#include "OnThreads.h"
#include "support/RecordedLog.h"

#include <atomic>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <set>
#include <vector>
#include <zol/common/LoggingWrapper.h>

namespace
{

using Zol::LoggingWrapper;
using zoltest::onThreads;

constexpr int ThreadCount = 8;

// In a process of its own the log doesn't exist yet.
TEST(LogThreads, AllGetTheSameLogWhoeverIsFirst)
{
    std::vector<LoggingWrapper*> logs(ThreadCount);
    std::atomic<int> ready = 0;
    onThreads(ThreadCount, [&](int i) {
        ++ready;
        while (ready < ThreadCount)
        {
            std::this_thread::yield();
        }
        logs[static_cast<std::size_t>(i)] = &LoggingWrapper::instance();
    });
    EXPECT_THAT(logs, testing::Each(&LoggingWrapper::instance()));
}

TEST(LogThreads, LoseNoRecord)
{
    const zoltest::RecordedLog recorded;
    onThreads(ThreadCount, [](int i) {
        for (int line = 0; line < 200; ++line)
        {
            LoggingWrapper::instance().log_printf("function", 3, 1, "%d %d", i, line);
        }
    });
    std::set<std::string> texts;
    for (const auto& call : recorded.calls())
    {
        texts.insert(call.text);
    }
    EXPECT_THAT(texts, testing::SizeIs(ThreadCount * 200));
}

/// Counts the sinks that exist and the records that reached any of them.
class CountingSink : public Zol::LogSink
{
public:
    CountingSink(std::atomic<int>& sinks, std::atomic<int>& records)
        : _sinks(sinks)
        , _records(records)
    {
        ++_sinks;
    }
    CountingSink(const CountingSink&) = delete;
    CountingSink& operator=(const CountingSink&) = delete;
    ~CountingSink() override { --_sinks; }

    void write(const Zol::LogRecord& /*record*/) override { ++_records; }

private:
    std::atomic<int>& _sinks;
    std::atomic<int>& _records;
};

TEST(LogThreads, MayReplaceLevelAndSinkWhileOthersLog)
{
    std::atomic<int> sinks = 0;
    std::atomic<int> records = 0;
    {
        const zoltest::RecordedLog restoresLevelAndSink;
        LoggingWrapper::instance().set_sink(std::make_shared<CountingSink>(sinks, records));
        onThreads(ThreadCount, [&](int i) {
            for (int line = 0; line < 200; ++line)
            {
                if (i == 0)
                {
                    LoggingWrapper::instance().set_level(3 + line % 2);
                    LoggingWrapper::instance().set_sink(std::make_shared<CountingSink>(sinks, records));
                }
                else
                {
                    LoggingWrapper::instance().log_printf("function", 3, 1, "%d", line);
                }
            }
        });
    }
    EXPECT_EQ(records, (ThreadCount - 1) * 200);
    EXPECT_EQ(sinks, 0);
}

} // namespace
