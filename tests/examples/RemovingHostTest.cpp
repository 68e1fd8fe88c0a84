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

class RemovingHost : public testing::Test
{
protected:
    ProcessOutcome run(const std::string& directory, const std::string& expression,
                       const std::string& library = ZOL_FILE_MANAGEMENT_LIBRARY) const
    {
        return zoltest::runProcess({REMOVING_HOST_PROGRAM, library, tree.path(), directory, expression});
    }

    TemporaryTree tree;
};

} // namespace

TEST_F(RemovingHost, RemovesFilesWhoseWholeNameMatches)
{
    tree.file("logs/a.log");
    tree.file("logs/a.log.1");
    tree.file("logs/b.log");
    tree.file("logs/c.txt");
    EXPECT_EQ(run("logs", "a.*g|b.log|.txt"), (ProcessOutcome{0, "2 of 4 files removed\n", ""}));
    EXPECT_EQ(tree.listing(), (Texts{"d logs", "f logs/a.log.1 1", "f logs/c.txt 1"}));
}

TEST_F(RemovingHost, ShowsWhatTheComponentSays)
{
    tree.file("logs/a.log");
    EXPECT_EQ(run("logs", "("), (ProcessOutcome{1, "",
                                                "the component says: Invalid regular expression\n"
                                                "removing_host: removeFile is refused\n"}));
}

TEST_F(RemovingHost, TakesTheLogOfTheLibrary)
{
    const std::string root = tree.path("missing");
    EXPECT_EQ(zoltest::runProcess({REMOVING_HOST_PROGRAM, ZOL_FILE_MANAGEMENT_LIBRARY, root, "logs", "a"}),
              (ProcessOutcome{1, "",
                              "log, severity 3: The File Management internal root path (" + root +
                                  ") does not exist.\nremoving_host: start is refused\n"}));
}

TEST_F(RemovingHost, FailsWithoutTheLibrary)
{
    const auto outcome = run("logs", "a", tree.path("missing.so"));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(outcome.err, StartsWith("removing_host: the library can't be used: "));
}

TEST_F(RemovingHost, TakesNoNameThatLeadsElsewhere)
{
    tree.file("a.log");
    tree.directory("logs");
    for (const std::string name : {"", ".", "..", "../x", "a,FileGroup=b", "?\?x"})
    {
        EXPECT_EQ(run(name, "a.log"),
                  (ProcessOutcome{1, "",
                                  "removing_host: the name of the directory or of the root can't be used "
                                  "here\n"}));
    }
    EXPECT_EQ(tree.listing(), (Texts{"d logs", "f a.log 1"}));
}
