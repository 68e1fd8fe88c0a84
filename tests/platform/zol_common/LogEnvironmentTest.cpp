#include "LibraryProcess.h"
#include "support/TemporaryTree.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iterator>

namespace
{

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using zoltest::callsOf;
using zoltest::ChildOutcome;
using zoltest::logLines;
using zoltest::runLibrary;
using zoltest::TemporaryTree;

std::string contentOf(const std::string& path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(LogEnvironment, WithoutVariablesSeverities3And4GoToStandardError)
{
    const ChildOutcome outcome = runLibrary({});
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_THAT(callsOf(outcome.standardError), ElementsAre("log 3", "log 4"));
}

TEST(LogEnvironment, EmptyVariablesCountAsNone)
{
    const ChildOutcome outcome = runLibrary({}, {{"ZOL_LOG_LEVEL", ""}, {"ZOL_LOG_FILE", ""}});
    EXPECT_THAT(callsOf(outcome.standardError), ElementsAre("log 3", "log 4"));
}

TEST(LogEnvironment, ANumberSetsTheLevel)
{
    const std::vector<std::string> everything = {"log 3", "log 4", "log 5", "trace 9", "trace_v2 14"};
    struct Row
    {
        std::string level;
        std::vector<std::string> calls;
    };
    for (const auto& [level, calls] : std::vector<Row>{
             {"0", {}},
             {"2", {}},
             {"3", {"log 3"}},
             {"4", {"log 3", "log 4"}},
             {"5", {"log 3", "log 4", "log 5"}},
             {"007", {"log 3", "log 4", "log 5"}},
             {"8", everything},
             {"10", everything},
             {"99999999999999999999", everything},
         })
    {
        EXPECT_EQ(callsOf(runLibrary({}, {{"ZOL_LOG_LEVEL", level}}).standardError), calls) << level;
    }
}

TEST(LogEnvironment, ALevelThatIsNoNumberGivesLevel4AndOneLineThatSaysSo)
{
    for (const std::string level : {"-1", "+8", "8x", " 8", "8 ", "0x8", "debug"})
    {
        const ChildOutcome outcome = runLibrary({}, {{"ZOL_LOG_LEVEL", level}});
        ASSERT_THAT(callsOf(outcome.standardError), ElementsAre("log 4", "log 3", "log 4")) << level;
        EXPECT_EQ(logLines(outcome.standardError)[0].text,
                  "ZOL_LOG_LEVEL is \"" + level + "\", not a number from 0 on: level 4 is used");
        EXPECT_EQ(logLines(outcome.standardError)[0].place, "LoggingWrapper");
    }
}

TEST(LogEnvironment, LinesGoToTheFileAlone)
{
    const TemporaryTree tree;
    const ChildOutcome outcome = runLibrary({}, {{"ZOL_LOG_FILE", tree.path("log")}});
    EXPECT_THAT(outcome.standardError, IsEmpty());
    EXPECT_THAT(callsOf(contentOf(tree.path("log"))), ElementsAre("log 3", "log 4"));
}

TEST(LogEnvironment, TheLineAboutTheLevelGoesToTheFileToo)
{
    const TemporaryTree tree;
    const ChildOutcome outcome = runLibrary({}, {{"ZOL_LOG_FILE", tree.path("log")}, {"ZOL_LOG_LEVEL", "x"}});
    EXPECT_THAT(outcome.standardError, IsEmpty());
    EXPECT_THAT(contentOf(tree.path("log")), HasSubstr("ZOL_LOG_LEVEL is \"x\""));
}

TEST(LogEnvironment, TheFileIsAppendedTo)
{
    const TemporaryTree tree;
    const std::string file = tree.file("log", "an earlier line\n");
    runLibrary({}, {{"ZOL_LOG_FILE", file}});
    const auto lines = zoltest::split(contentOf(file), '\n');
    ASSERT_THAT(lines, SizeIs(3));
    EXPECT_EQ(lines[0], "an earlier line");
}

TEST(LogEnvironment, AFileThatCannotBeOpenedGivesOneLineAndStandardError)
{
    const TemporaryTree tree;
    const std::string file = tree.file("regular") + "/log";
    const ChildOutcome outcome = runLibrary({}, {{"ZOL_LOG_FILE", file}, {"ZOL_LOG_LEVEL", "3"}});
    const auto lines = logLines(outcome.standardError);
    ASSERT_THAT(lines, SizeIs(2));
    EXPECT_THAT(lines[0].text, AllOf(HasSubstr("ZOL_LOG_FILE can't be used, lines go to standard error: "),
                                     HasSubstr(file), HasSubstr("Not a directory")));
    EXPECT_EQ(lines[1].text, "text");
}

TEST(LogEnvironment, CommandsDoNotInheritTheFile)
{
    const TemporaryTree tree;
    const ChildOutcome outcome =
        runLibrary({.function = "logAndRunCommand"}, {{"ZOL_LOG_FILE", tree.path("log")}});
    EXPECT_THAT(contentOf(tree.path("log")), Not(IsEmpty()));
    EXPECT_THAT(outcome.standardError, HasSubstr("pipe:"));
    EXPECT_THAT(outcome.standardError, Not(HasSubstr(tree.path("log"))));
}

TEST(LogEnvironment, EveryLineIsThereAtOnce)
{
    const TemporaryTree tree;
    runLibrary({.end = "kill"}, {{"ZOL_LOG_FILE", tree.path("log")}});
    EXPECT_THAT(callsOf(contentOf(tree.path("log"))), ElementsAre("log 3", "log 4"));
}

TEST(LogEnvironment, LinesOfManyThreadsStayWhole)
{
    const TemporaryTree tree;
    const ChildOutcome outcome = runLibrary({.function = "logFromThreads", .text = std::string(3000, 'x')},
                                            {{"ZOL_LOG_FILE", tree.path("log")}});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.standardError;
    std::vector<std::string> expected;
    for (int thread = 0; thread < 8; ++thread)
    {
        for (int line = 0; line < 250; ++line)
        {
            expected.push_back(std::string(3000, 'x') + " " + std::to_string(thread) + " " +
                               std::to_string(line));
        }
    }
    std::vector<std::string> texts;
    std::map<std::string, int> linesOfThread;
    for (const auto& line : logLines(contentOf(tree.path("log"))))
    {
        texts.push_back(line.text);
        ++linesOfThread[line.thread];
    }
    std::sort(texts.begin(), texts.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_TRUE(texts == expected);
    EXPECT_THAT(linesOfThread, SizeIs(8));
    EXPECT_THAT(linesOfThread, Each(testing::Pair(testing::_, 250)));
}

TEST(LogEnvironment, NoSinkGoesBackToTheOneOfTheEnvironment)
{
    const ChildOutcome outcome = runLibrary({.function = "logAroundAnotherSink"});
    std::vector<std::string> texts;
    for (const auto& line : logLines(outcome.standardError))
    {
        texts.push_back(line.text);
    }
    EXPECT_THAT(texts, ElementsAre("before text", "after text"));
}

TEST(LogEnvironment, StaticConstructorsAndDestructorsLog)
{
    for (const char* const end : {"exit", "unload"})
    {
        SCOPED_TRACE(end);
        const ChildOutcome outcome =
            runLibrary({.library = zoltest::Library::StaticLoggers, .function = "doNothing", .end = end});
        EXPECT_EQ(outcome.exitStatus, 0) << outcome.standardError;
        const auto lines = logLines(outcome.standardError);
        ASSERT_THAT(lines, SizeIs(2));
        EXPECT_EQ(lines[0].place, "staticConstructor");
        EXPECT_EQ(lines[1].place, "staticDestructor");
    }
}

} // namespace
