#include "support/Process.h"
#include "support/TemporaryTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using testing::StartsWith;
using zoltest::ProcessOutcome;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

class MinimalHost : public testing::Test
{
protected:
    ProcessOutcome run(const std::string& directory, const std::string& newDirectory,
                       const std::string& library = ZOL_FILE_MANAGEMENT_LIBRARY) const
    {
        zoltest::ProcessSurroundings surroundings;
        surroundings.environment = {{"ZOL_LOG_LEVEL", "0"}};
        return zoltest::runProcess({MINIMAL_HOST_PROGRAM, library, tree.path(), directory, newDirectory},
                                   surroundings);
    }

    TemporaryTree tree;
};

} // namespace

TEST_F(MinimalHost, ListsTheFilesOfADirectoryAndCreatesOneInIt)
{
    tree.file("logs/a.log", "12345");
    tree.file("logs/b.txt", "");
    EXPECT_EQ(run("logs", "new"), (ProcessOutcome{0, "a.log 5\nb.txt 0\n", ""}));
    EXPECT_EQ(tree.listing(), (Texts{"d logs", "d logs/new", "f logs/a.log 5", "f logs/b.txt 0"}));
    EXPECT_EQ(tree.mode("logs/new"), 0770U);
}

TEST_F(MinimalHost, ShowsWhatTheComponentSays)
{
    tree.file("logs/.filemnodirectorycreate");
    EXPECT_EQ(run("logs", "new"),
              (ProcessOutcome{1, "",
                              "the component says: FileGroup does not allow child FileGroup to be created\n"
                              "minimal_host: creating the directory: the component refuses it\n"}));
    EXPECT_FALSE(tree.exists("logs/new"));
}

TEST_F(MinimalHost, FailsWithoutTheDirectoryOrTheLibrary)
{
    EXPECT_EQ(run("missing", "new"),
              (ProcessOutcome{1, "", "minimal_host: getMoAttribute: the component refuses it\n"}));
    const auto outcome = run("missing", "new", tree.path("missing.so"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.err, StartsWith("minimal_host: the library can't be used: "));
}

TEST_F(MinimalHost, TakesNoNameThatLeadsElsewhere)
{
    tree.directory("logs");
    for (const std::string name : {"", ".", "..", "...", "../x", "a,FileGroup=b", "?\?x"})
    {
        const ProcessOutcome refused = {
            1, "", "minimal_host: " + name + ": this name or that of the root can't be used here\n"};
        EXPECT_EQ(run(name, "new"), refused);
        EXPECT_EQ(run("logs", name), refused);
    }
    EXPECT_EQ(tree.listing(), Texts{"d logs"});
}
