#include "LogForms.h"

#include "support/RecordedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using testing::IsEmpty;
using zoltest::LogCall;
using zoltest::RecordedLog;
using Call = Zol::LogRecord::Call;

struct Form
{
    const char* name;
    void (*emit)(const char* (*argument)());
    int lowestLevel;
    Call firstCall;
    unsigned int firstNumber; // the group of a trace, the severity of a log
    unsigned int secondNumber;
};

const Form forms[] = {
    {"enter", [](auto argument) { ZOL_ENTER_TRACE("about %s", argument()); }, 8, Call::Trace, 9, 14},
    {"exit", [](auto argument) { ZOL_EXIT_TRACE("about %s", argument()); }, 8, Call::Trace, 10, 14},
    {"plain", [](auto argument) { ZOL_PLAIN_TRACE("about %s", argument()); }, 8, Call::Trace, 0, 14},
    {"severity-3", [](auto argument) { ZOL_SEVERITY_LOG(3, "about %s", argument()); }, 3, Call::Log, 3, 3},
    {"severity-4", [](auto argument) { ZOL_SEVERITY_LOG(4, "about %s", argument()); }, 4, Call::Log, 4, 4},
};

int evaluations = 0;

const char* countedArgument()
{
    ++evaluations;
    return "it";
}

std::vector<LogCall> callsAtLevel(int level, const Form& form)
{
    const RecordedLog log(level);
    form.emit(countedArgument);
    return log.calls();
}

TEST(LogForms, StatementMakesItsTwoCallsInOrderWithTheSameText)
{
    for (const auto& form : forms)
    {
        SCOPED_TRACE(form.name);
        const auto calls = callsAtLevel(form.lowestLevel, form);
        ASSERT_EQ(calls.size(), 2U);
        EXPECT_EQ(calls[0].call, form.firstCall);
        EXPECT_EQ(calls[0].number, form.firstNumber);
        EXPECT_EQ(calls[0].text, "about it");
        EXPECT_EQ(calls[1].call, Call::TraceV2);
        EXPECT_EQ(calls[1].number, form.secondNumber);
        EXPECT_EQ(calls[1].text, "about it");
    }
}

TEST(LogForms, LogHasCategory1)
{
    for (const auto& form : forms)
    {
        if (form.firstCall == Call::Log)
        {
            SCOPED_TRACE(form.name);
            EXPECT_EQ(callsAtLevel(8, form).at(0).category, 1U);
        }
    }
}

TEST(LogForms, SubsystemIsFileM)
{
    for (const auto& form : forms)
    {
        SCOPED_TRACE(form.name);
        EXPECT_EQ(callsAtLevel(8, form).at(1).subsystem, Zol::Trace::FileM);
    }
}

TEST(LogForms, TraceFormTakesTheSubsystemGiven)
{
    const RecordedLog log(8);
    ZOL_TRACE_FORM(0, Zol::Trace::Common, "about %d", 5);
    EXPECT_THAT(log.statements(), testing::ElementsAre("plain about 5 [subsystem 1]"));
}

TEST(LogForms, BelowItsLevelAStatementMakesNoCallAndEvaluatesNoArgument)
{
    for (const auto& form : forms)
    {
        SCOPED_TRACE(form.name);
        evaluations = 0;
        EXPECT_THAT(callsAtLevel(form.lowestLevel - 1, form), IsEmpty());
        EXPECT_EQ(evaluations, 0);
        callsAtLevel(form.lowestLevel, form);
        EXPECT_GT(evaluations, 0);
    }
}

TEST(LogForms, AboveItsLevelAStatementIsEmittedToo)
{
    for (const auto& form : forms)
    {
        SCOPED_TRACE(form.name);
        EXPECT_EQ(callsAtLevel(form.lowestLevel + 1, form).size(), 2U);
    }
}

TEST(LogForms, PlaceIsThatOfTheStatement)
{
    const RecordedLog log(8);
    int line = __LINE__ + 1;
    ZOL_ENTER_TRACE("first");
    ZOL_EXIT_TRACE("second");
    ZOL_PLAIN_TRACE("third");
    ZOL_SEVERITY_LOG(3, "fourth");

    const auto calls = log.calls();
    ASSERT_EQ(calls.size(), 8U);
    for (std::size_t i = 0; i < calls.size(); ++i)
    {
        EXPECT_EQ(calls[i].function, "TestBody");
        if (calls[i].call != Call::Log)
        { // whose place is the function alone
            EXPECT_EQ(calls[i].file, __FILE__);
            EXPECT_EQ(calls[i].line, line);
        }
        line += static_cast<int>(i % 2);
    }
}

} // namespace
