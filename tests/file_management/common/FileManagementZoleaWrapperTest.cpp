#include "FileManagementZoleaWrapper.h"

#include "ShellFaults.h"
#include "support/ChildProcess.h"
#include "support/FakeZolea.h"
#include "support/ObservedThread.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <sys/stat.h>
#include <thread>
#include <vector>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using ZolFileManagementCommon::FileManagementZoleaWrapper;
using zoltest::FakeZolea;
using zoltest::RecordedLog;

namespace
{

std::string outputOf(const std::string& script, const std::string& arguments = "")
{
    const FakeZolea zolea(script);
    return FileManagementZoleaWrapper().invokeZolea(arguments);
}

std::string rootPrintedBy(const std::string& script)
{
    const FakeZolea zolea(script);
    std::string root = "as before";
    EXPECT_TRUE(FileManagementZoleaWrapper().readConfiguration(root));
    return root;
}

} // namespace

TEST(ExternalTool, IsRunWithTheArguments)
{
    const FakeZolea zolea("echo \"$# $1\"");
    EXPECT_EQ(FileManagementZoleaWrapper().invokeZolea("get thing"), "2 get");
    EXPECT_THAT(zolea.runs(), ElementsAre("get thing"));
}

TEST(ExternalTool, IsRunThroughTheShellWithTheArgumentsAsTheyStand)
{
    EXPECT_EQ(outputOf("echo \"$#\"", "'a b'; echo second"), "1\nsecond");
}

TEST(ExternalTool, IsAskedForTheInternalRoot)
{
    const FakeZolea zolea("echo /data/fs");
    std::string root;
    EXPECT_TRUE(FileManagementZoleaWrapper().readConfiguration(root));
    EXPECT_EQ(root, "/data/fs");
    EXPECT_THAT(zolea.runs(), ElementsAre("file-system internalRoot"));
}

TEST(ExternalTool, IsAskedAnewEachTime)
{
    FakeZolea zolea("echo /first");
    FileManagementZoleaWrapper wrapper;
    std::string root;
    wrapper.readConfiguration(root);
    zolea.setScript("echo /second");
    wrapper.readConfiguration(root);
    EXPECT_EQ(root, "/second");
}

TEST(ExternalTool, WhiteSpaceAroundItsOutputGoes)
{
    EXPECT_EQ(rootPrintedBy("printf '/data/fs\\n'"), "/data/fs");
    EXPECT_EQ(rootPrintedBy("printf '  /data/fs  \\n\\n'"), "/data/fs");
    EXPECT_EQ(outputOf("printf ' \\t\\n\\v\\f\\r/data fs \\t\\n\\v\\f\\r'"), "/data fs");
}

TEST(ExternalTool, SlashAtTheEndStays)
{
    EXPECT_EQ(rootPrintedBy("echo /data/fs/"), "/data/fs/");
}

TEST(ExternalTool, TwoLinesStayWithTheLineFeedBetweenThem)
{
    EXPECT_EQ(rootPrintedBy("echo /data/fs; echo /data/other"), "/data/fs\n/data/other");
}

TEST(ExternalTool, PiecesOfALongLineAreJoinedWithoutAGap)
{
    std::string numbers;
    for (int i = 1; i <= 3000; ++i)
    {
        numbers += std::to_string(i) + ",";
    }
    EXPECT_EQ(rootPrintedBy("i=1; while [ $i -le 3000 ]; do printf '%d,' $i; i=$((i + 1)); done"), numbers);
}

TEST(ExternalTool, LinesOfExactlyOnePieceAndOneMoreAreWhole)
{
    for (const std::size_t length : {1022U, 1023U, 1024U, 2046U, 2047U})
    {
        const std::string line(length, 'x');
        EXPECT_EQ(outputOf("echo " + line + "; echo end"), line + "\nend");
    }
}

TEST(ExternalTool, ZeroByteEndsItsPieceOfTheOutput)
{
    EXPECT_EQ(outputOf("printf 'ab\\0cd\\nef\\0\\ngh'"), "abefgh");
    EXPECT_EQ(outputOf("printf '\\0'"), "");
}

TEST(ExternalTool, ZeroByteEndsAPieceOf1023BytesOfALongLine)
{
    const std::string filling(2000, 'x');
    EXPECT_EQ(outputOf("printf 'ab\\0" + filling + "\\n'"), "ab" + std::string(3 + 2000 - 1023, 'x'));
}

/// A pipe with a name: who reads it waits until somebody writes.
class NamedPipe
{
public:
    NamedPipe()
    {
        if (mkfifo(path.c_str(), 0600) != 0)
        {
            throw std::runtime_error("no pipe " + path);
        }
    }

    void write(const std::string& line) const { std::ofstream(path) << line << std::endl; }

private:
    zoltest::TemporaryTree _folder;

public:
    const std::string path = _folder.path("pipe");
};

TEST(ExternalTool, OutputIsWaitedForAsLongAsAProcessInTheBackgroundHoldsIt)
{
    const NamedPipe pipe;
    const FakeZolea zolea("echo /data/fs\n{ read line <'" + pipe.path + "'; echo \"$line\"; } &");
    std::string output;
    {
        const zoltest::ObservedThread reader([&] { output = FileManagementZoleaWrapper().invokeZolea("x"); });
        EXPECT_TRUE(reader.waits());
        pipe.write("late");
    }
    EXPECT_EQ(output, "/data/fs\nlate");
}

TEST(ExternalTool, ProcessInTheBackgroundThatHasLetGoOfTheOutputIsNotWaitedFor)
{
    const NamedPipe pipe;
    EXPECT_EQ(outputOf("{ read line <'" + pipe.path + "'; } >/dev/null &\necho /data/fs"), "/data/fs");
    pipe.write("now end");
}

TEST(ExternalTool, MegabytesAreTakenWhole)
{
    const std::string line(1023, 'x');
    const std::string output =
        outputOf("i=0; while [ $i -lt 3000 ]; do echo " + line + "; i=$((i + 1)); done");
    EXPECT_EQ(output.size(), 3000U * 1024U - 1U);
    EXPECT_EQ(output.find_first_not_of("x\n"), std::string::npos);
}

TEST(ExternalTool, ThatPrintsNothingGivesTheEmptyText)
{
    EXPECT_EQ(outputOf("true"), "");
    EXPECT_EQ(rootPrintedBy("true"), "");
    EXPECT_EQ(rootPrintedBy("printf ' \\n\\t \\n'"), "");
}

TEST(ExternalTool, ExitStatusIsNotLookedAt)
{
    EXPECT_EQ(rootPrintedBy("printf x; exit 1"), "x");
    EXPECT_EQ(outputOf("echo x; kill -9 $$"), "x");
}

TEST(ExternalTool, StandardErrorIsNotCaptured)
{
    const FakeZolea zolea("echo aside >&2; echo /data/fs");
    const auto outcome = zoltest::runInChild(
        [] { return FileManagementZoleaWrapper().invokeZolea("x") == "/data/fs" ? 0 : 1; });
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.standardError, "aside\n");
}

TEST(ExternalTool, ThatIsNotInstalledGivesTheEmptyTextAndTheShellsComplaint)
{
    const zoltest::TemporaryTree emptyFolder;
    const auto outcome = zoltest::runInChild([&] {
        setenv("PATH", emptyFolder.path().c_str(), 1);
        std::string root = "as before";
        return FileManagementZoleaWrapper().readConfiguration(root) && root.empty() ? 0 : 1;
    });
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_THAT(outcome.standardError, HasSubstr("zolea"));
}

TEST(ExternalTool, RunIsTraced)
{
    const FakeZolea zolea("exit 1");
    const RecordedLog log;
    FileManagementZoleaWrapper().invokeZolea("a b");
    EXPECT_THAT(log.statements(), ElementsAre("enter  >> Invoking: zolea a b", "plain Executing 'zolea a b'",
                                              "plain Executed 'zolea a b'", "exit  << "));
}

TEST(ExternalTool, QuestionForTheInternalRootIsTraced)
{
    const FakeZolea zolea("echo /data/fs");
    const RecordedLog log;
    std::string root;
    FileManagementZoleaWrapper().readConfiguration(root);
    EXPECT_THAT(log.statements(),
                ElementsAre("enter  >> ", "enter  >> Invoking: zolea file-system internalRoot",
                            "plain Executing 'zolea file-system internalRoot'",
                            "plain Executed 'zolea file-system internalRoot'", "exit  << ", "exit  << "));
}

TEST(ExternalTool, OneObjectRunsOneCommandAtATime)
{
    const FakeZolea zolea("echo x");
    const FileManagementZoleaWrapper wrapper;
    zoltest::ShellFaults shell;
    std::mutex mutex; // protects the commands
    std::vector<std::string> commands;
    const auto commandsSoFar = [&] {
        const std::scoped_lock lock(mutex);
        return commands;
    };
    shell.onPopen = [&](const std::string& command) {
        const std::scoped_lock lock(mutex);
        commands.push_back(command);
    };
    std::atomic<bool> isFirst = true;
    std::unique_ptr<zoltest::ObservedThread> second;
    shell.onPclose = [&] {
        if (isFirst.exchange(false))
        {
            second = std::make_unique<zoltest::ObservedThread>([&] { wrapper.invokeZolea("second"); });
            EXPECT_TRUE(second->waits());
            EXPECT_THAT(commandsSoFar(), ElementsAre("zolea first"));
        }
    };

    wrapper.invokeZolea("first");
    second.reset();
    EXPECT_THAT(commandsSoFar(), ElementsAre("zolea first", "zolea second"));
}

TEST(ExternalTool, CommandThatWaitsForAnotherHasBeenTraced)
{
    const FakeZolea zolea("echo x");
    const FileManagementZoleaWrapper wrapper;
    const RecordedLog log;
    zoltest::ShellFaults shell;
    std::unique_ptr<zoltest::ObservedThread> second;
    shell.onPopen = [&](const std::string& command) {
        if (command == "zolea first")
        {
            second = std::make_unique<zoltest::ObservedThread>([&] { wrapper.invokeZolea("second"); });
            EXPECT_TRUE(second->waits());
            EXPECT_THAT(log.statements(), Contains("enter  >> Invoking: zolea second"));
        }
    };
    wrapper.invokeZolea("first");
}

TEST(ExternalTool, ObjectsDoNotExcludeEachOther)
{
    const FakeZolea zolea("echo x");
    zoltest::ShellFaults shell;
    std::string outputOfSecond;
    shell.onPopen = [&](const std::string& command) {
        if (command == "zolea first")
        {
            std::thread([&] { outputOfSecond = FileManagementZoleaWrapper().invokeZolea("second"); }).join();
        }
    };
    FileManagementZoleaWrapper().invokeZolea("first");
    EXPECT_EQ(outputOfSecond, "x");
}

TEST(ExternalTool, ArgumentsAreJoinedWithBlanksAndNotQuoted)
{
    const FileManagementZoleaWrapper wrapper;
    EXPECT_EQ(wrapper.serialize({"a", "b c", "d"}), "a b c d");
    EXPECT_EQ(wrapper.serialize({"a"}), "a");
    EXPECT_EQ(wrapper.serialize({}), "");
    EXPECT_EQ(wrapper.serialize({"", "", "'x'"}), "  'x'");
    EXPECT_EQ(wrapper.serialize({"a", "a"}), "a a");
}
