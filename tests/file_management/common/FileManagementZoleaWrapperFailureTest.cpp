#include "FileManagementZoleaWrapper.h"

#include "ShellFaults.h"
#include "support/ChildProcess.h"
#include "support/FakeZolea.h"
#include "support/RecordedLog.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <zol/common/ZolException.h>

using ZolFileManagementCommon::FileManagementZoleaWrapper;
using zoltest::FakeZolea;
using zoltest::RecordedLog;
using zoltest::ShellFaults;

namespace
{

const std::string command = "zolea file-system internalRoot";

std::string errorText(int error)
{
    return std::strerror(error);
}

// The question for the internal root: a line for each statement and one for its outcome.
std::string question()
{
    const RecordedLog log;
    std::string root = "as before";
    std::string outcome;
    try
    {
        FileManagementZoleaWrapper().readConfiguration(root);
        outcome = "no failure";
    }
    catch (const Zol::ZolException& failure)
    {
        outcome = "code " + std::to_string(failure.code()) + ", " + failure.what();
    }
    std::string text;
    for (const auto& statement : log.statements())
    {
        text += statement + "\n";
    }
    return text + outcome + "\n" + root;
}

std::string questionInChild(const std::function<void()>& prepare)
{
    return zoltest::runInChild([&] {
               prepare();
               std::fputs(question().c_str(), stderr);
               return 0;
           })
        .standardError;
}

std::string failedQuestion(const std::string& tracesInBetween, const std::string& traceError,
                           const std::string& exceptionError)
{
    return "enter  >> \nenter  >> Invoking: " + command + "\n" + tracesInBetween +
           "plain Failed to invoke zolea : execution of '" + command + "' failed - error=" + traceError +
           "\ncode -1, Failed to invoke: zolea zolea file-system internalRoot, error=" + exceptionError +
           "\nas before";
}

const std::string executing = "plain Executing '" + command + "'\n";

} // namespace

TEST(ExternalToolFailure, ToStartTheShellIsReportedWithItsReason)
{
    ShellFaults shell;
    shell.popenError = EMFILE;
    EXPECT_EQ(question(), failedQuestion("", errorText(EMFILE), errorText(EMFILE)));
}

TEST(ExternalToolFailure, ToTakeArgumentsThatAreTooLongIsReportedWithTheSystemsReason)
{
    const std::string arguments(200000, 'x');
    const std::string commandLine = "zolea " + arguments;
    errno = 0;
    ASSERT_EQ(::popen(commandLine.c_str(), "r"), nullptr);
    const std::string reason = errorText(errno);

    const RecordedLog log;
    try
    {
        FileManagementZoleaWrapper().invokeZolea(arguments);
        FAIL() << "no exception";
    }
    catch (const Zol::ZolException& failure)
    {
        EXPECT_EQ(failure.what(), "Failed to invoke: zolea " + commandLine + ", error=" + reason);
    }
    EXPECT_EQ(log.statements().back(),
              "plain Failed to invoke zolea : execution of '" + commandLine + "' failed - error=" + reason);
}

TEST(ExternalToolFailure, ToLearnHowTheShellEndedIsReportedWithItsReason)
{
    const FakeZolea zolea("echo /data/fs");
    EXPECT_EQ(questionInChild([] { std::signal(SIGCHLD, SIG_IGN); }),
              failedQuestion(executing, errorText(ECHILD), errorText(ECHILD)));
}

TEST(ExternalToolFailure, WithoutAReasonIsAnAbnormalTerminationInTheTraceAlone)
{
    const FakeZolea zolea("echo /data/fs");
    ShellFaults shell;
    shell.popenError = 0;
    EXPECT_EQ(question(), failedQuestion("", "'Abnormal termination'", errorText(0)));
    shell.popenError.reset();
    shell.pcloseError = 0;
    EXPECT_EQ(question(), failedQuestion(executing, "'Abnormal termination'", errorText(0)));
}

TEST(ExternalToolFailure, ReasonOfAnEarlierFailureDoesNotCount)
{
    ShellFaults shell;
    shell.popenError = 0;
    errno = EIO;
    EXPECT_EQ(question(), failedQuestion("", "'Abnormal termination'", errorText(0)));
}

TEST(ExternalToolFailure, NamesTheWholeCommandLineBehindItsOwnWord)
{
    ShellFaults shell;
    shell.popenError = ENOMEM;
    try
    {
        FileManagementZoleaWrapper().invokeZolea("a b");
        FAIL() << "no exception";
    }
    catch (const Zol::ZolException& failure)
    {
        EXPECT_EQ(failure.what(), "Failed to invoke: zolea zolea a b, error=" + errorText(ENOMEM));
    }
}

TEST(ExternalToolFailure, LetsTheNextCommandRun)
{
    const FakeZolea zolea("echo x");
    const FileManagementZoleaWrapper wrapper;
    ShellFaults shell;
    shell.popenError = ENOMEM;
    EXPECT_THROW(wrapper.invokeZolea("first"), Zol::ZolException);
    shell.popenError.reset();
    shell.pcloseError = ECHILD;
    EXPECT_THROW(wrapper.invokeZolea("second"), Zol::ZolException);
    shell.pcloseError.reset();

    std::string output;
    // on another thread, since its own could take the lock twice
    std::thread([&] { output = wrapper.invokeZolea("third"); }).join();
    EXPECT_EQ(output, "x");
}
