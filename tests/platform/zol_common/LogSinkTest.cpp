#include "support/RecordedLog.h"

#include <cerrno>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <zol/common/LoggingWrapper.h>

namespace
{

using Zol::LoggingWrapper;
using Zol::LogRecord;
using zoltest::RecordedLog;

/// Does at each record what a test asks for.
class ActingSink : public Zol::LogSink
{
public:
    explicit ActingSink(std::function<void(const LogRecord&)> action)
        : _action(std::move(action))
    {}

    void write(const LogRecord& record) override { _action(record); }

private:
    std::function<void(const LogRecord&)> _action;
};

/// A sink and the level 8 for the time of a test.
class InstalledSink
{
public:
    explicit InstalledSink(std::function<void(const LogRecord&)> action)
    {
        LoggingWrapper::instance().set_sink(std::make_shared<ActingSink>(std::move(action)));
    }
    InstalledSink(const InstalledSink&) = delete;
    InstalledSink& operator=(const InstalledSink&) = delete;
    ~InstalledSink() { LoggingWrapper::instance().set_sink(nullptr); }

private:
    RecordedLog _restoresLevelAndSink;
};

TEST(LogSink, GetsEveryPartOfALog)
{
    const RecordedLog recorded;
    LoggingWrapper::instance().log_printf("aFunction", 3, 7, "a %s and %d", "text", 5);
    ASSERT_THAT(recorded.calls(), testing::SizeIs(1));
    const auto call = recorded.calls().front();
    EXPECT_EQ(call.call, LogRecord::Call::Log);
    EXPECT_EQ(call.number, 3);
    EXPECT_EQ(call.category, 7);
    EXPECT_EQ(call.subsystem, 0);
    EXPECT_EQ(call.file, "");
    EXPECT_EQ(call.function, "aFunction");
    EXPECT_EQ(call.line, 0);
    EXPECT_EQ(call.text, "a text and 5");
}

TEST(LogSink, GetsEveryPartOfATrace)
{
    const RecordedLog recorded;
    LoggingWrapper::instance().trace_printf("aFile", "aFunction", 42, 9, "a %s", "text");
    ASSERT_THAT(recorded.calls(), testing::SizeIs(1));
    const auto call = recorded.calls().front();
    EXPECT_EQ(call.call, LogRecord::Call::Trace);
    EXPECT_EQ(call.number, 9);
    EXPECT_EQ(call.category, 0);
    EXPECT_EQ(call.subsystem, 0);
    EXPECT_EQ(call.file, "aFile");
    EXPECT_EQ(call.function, "aFunction");
    EXPECT_EQ(call.line, 42);
    EXPECT_EQ(call.text, "a text");
}

TEST(LogSink, GetsEveryPartOfATraceOfVersion2)
{
    const RecordedLog recorded;
    LoggingWrapper::instance().trace_v2_printf(2, 14, "aFile", "aFunction", 42, "a %s", "text");
    ASSERT_THAT(recorded.calls(), testing::SizeIs(1));
    const auto call = recorded.calls().front();
    EXPECT_EQ(call.call, LogRecord::Call::TraceV2);
    EXPECT_EQ(call.number, 14);
    EXPECT_EQ(call.category, 0);
    EXPECT_EQ(call.subsystem, 2);
    EXPECT_EQ(call.file, "aFile");
    EXPECT_EQ(call.function, "aFunction");
    EXPECT_EQ(call.line, 42);
    EXPECT_EQ(call.text, "a text");
}

TEST(LogSink, BelongsToTheOneLogOfTheProcess)
{
    EXPECT_EQ(&LoggingWrapper::instance(), &LoggingWrapper::instance());
}

TEST(LogSink, GetsATextOfAnyLength)
{
    const RecordedLog recorded;
    for (const std::size_t length : {0U, 510U, 511U, 512U, 513U, 1'000'000U})
    {
        LoggingWrapper::instance().log_printf("function", 3, 1, "%s", std::string(length, 'x').c_str());
        EXPECT_EQ(recorded.calls().back().text, std::string(length, 'x'));
    }
}

TEST(LogSink, GetsTheFormatOfATextThatCannotBeMade)
{
    const RecordedLog recorded;
    const wchar_t* const notACharacter = L"\xd800";
    LoggingWrapper::instance().log_printf("function", 3, 1, "name %ls", notACharacter);
    ASSERT_THAT(recorded.calls(), testing::SizeIs(1));
    EXPECT_EQ(recorded.calls().front().text, "name %ls");
}

TEST(LogSink, ThatThrowsDoesNotTakeItsCallerDown)
{
    int writes = 0;
    const InstalledSink sink([&writes](const LogRecord& /*record*/) {
        if (++writes == 1)
        {
            throw std::runtime_error("full");
        }
        throw 5;
    });
    const auto logTwice = []() noexcept {
        LoggingWrapper::instance().log_printf("function", 3, 1, "text");
        LoggingWrapper::instance().log_printf("function", 3, 1, "text");
    };
    logTwice();
    EXPECT_EQ(writes, 2);
}

TEST(LogSink, DoesNotChangeErrnoForTheCaller)
{
    const InstalledSink sink([](const LogRecord& /*record*/) { errno = EIO; });
    errno = ENOTDIR;
    LoggingWrapper::instance().log_printf("function", 3, 1, "text");
    EXPECT_EQ(errno, ENOTDIR);
}

TEST(LogSink, LivesUntilItsLastWriteHasEnded)
{
    bool goneWhileWriting = false;
    std::weak_ptr<int> life;
    {
        auto token = std::make_shared<int>(0);
        life = token;
        LoggingWrapper::instance().set_sink(
            std::make_shared<ActingSink>([token, &life, &goneWhileWriting](const LogRecord& /*record*/) {
                LoggingWrapper::instance().set_sink(nullptr);
                goneWhileWriting = life.expired();
            }));
    }
    LoggingWrapper::instance().log_printf("function", 0, 1, "text");
    EXPECT_FALSE(goneWhileWriting);
    EXPECT_TRUE(life.expired());
}

} // namespace
