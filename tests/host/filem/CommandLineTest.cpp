#include "Filem.h"

#include "support/LoadedComponent.h"

#include <gmock/gmock.h>
#include <string>

using testing::HasSubstr;
using testing::StartsWith;
using zoltest::configurationFor;
using zoltest::ProcessSurroundings;

namespace
{

using CommandLineTest = Filem;

} // namespace

TEST_F(CommandLineTest, NeedsARootThatIsADirectory)
{
    tree.file("f");
    EXPECT_EQ(run({"--root", tree.path("missing"), "ls"}),
              (Outcome{5, "",
                       "filem: there is no root " + tree.path("missing") + ": No such file or directory\n"}));
    EXPECT_EQ(run({"--root", tree.path("f"), "ls"}),
              (Outcome{5, "", "filem: there is no root " + tree.path("f") + ": Not a directory\n"}));
    EXPECT_EQ(run({"--root", "", "ls"}).exitCode, 5);
    tree.directory("\x01");
    EXPECT_EQ(
        run({"--root", tree.path("\x01"), "ls"}),
        (Outcome{5, "",
                 "filem: the path of the root can't stand in a configuration document: it holds control "
                 "characters or is no UTF-8\n"}));
}

TEST_F(CommandLineTest, TakesARootRelativeToTheWorkingDirectoryAndThroughLinks)
{
    tree.directory("a b & <c>/found");
    tree.directory("other/deeper");
    tree.link("link", tree.path("other/deeper"));
    const Outcome found = {0, "FileMConfigData=1\nfound/\n", ""};
    ProcessSurroundings surroundings;
    surroundings.directory = tree.path();
    EXPECT_EQ(run({"--root", "a b & <c>", "ls"}, surroundings), found);
    EXPECT_EQ(run({"--root", "a b & <c>/", "ls"}, surroundings), found);
    EXPECT_EQ(run({"--root", "link/..", "ls"}, surroundings),
              (Outcome{0, "FileMConfigData=1\ndeeper/\n", ""}));
}

TEST_F(CommandLineTest, TakesAConfigurationDocument)
{
    tree.directory("tree/found");
    tree.file("<config>", configurationFor(tree.path("tree")));
    tree.file("bad", "no document");
    ProcessSurroundings surroundings;
    surroundings.directory = tree.path();
    EXPECT_EQ(run({"--config", "<config>", "ls"}, surroundings),
              (Outcome{0, "FileMConfigData=1\nfound/\n", ""}));
    EXPECT_EQ(run({"--config", "bad", "ls"}, surroundings),
              (Outcome{5, "", "filem: the component can't read its configuration\n"}));
    EXPECT_EQ(run({"--config", "missing", "ls"}, surroundings),
              (Outcome{5, "", "filem: there is no configuration missing\n"}));
}

TEST_F(CommandLineTest, LetsTheExternalCommandNameTheRootIfNothingElseDoes)
{
    tree.directory("tree/found");
    tree.file("bin/zolea", "#!/bin/sh\necho " + tree.path("tree") + "\n");
    tree.chmod("bin/zolea", 0755);
    ProcessSurroundings surroundings;
    surroundings.environment = {{"PATH", tree.path("bin") + ":/usr/bin:/bin"}};
    EXPECT_EQ(run({"ls"}, surroundings), (Outcome{0, "FileMConfigData=1\nfound/\n", ""}));
    EXPECT_EQ(run({"stat", "FileMConfigData=1"}, surroundings),
              (Outcome{0,
                       "dn: " + root + ",FileMConfigData=1\nfileMConfigDataId: 1\ninternalRoot: " +
                           tree.path("tree") + "\n",
                       ""}));
    tree.directory("tree/found/below");
    EXPECT_EQ(run({"rmdir", "found/below"}, surroundings), (Outcome{0, "", ""})) << "the host knows it too";
    EXPECT_FALSE(tree.exists("tree/found/below"));

    tree.file("bin/zolea", "#!/bin/sh\necho /there/is/no/such/root\n");
    EXPECT_EQ(run({"ls"}, surroundings),
              (Outcome{5, "",
                       "filem: the component doesn't start: the root of the file tree isn't known or isn't "
                       "there\n"}));
}

TEST_F(CommandLineTest, TakesAnotherLibrary)
{
    const Outcome missing = run({"--library", tree.path("missing.so"), "--root", tree.path(), "ls"});
    EXPECT_EQ(missing.exitCode, 5);
    EXPECT_THAT(missing.err, StartsWith("filem: the library can't be loaded: " + tree.path("missing.so")));
    EXPECT_EQ(run({"--library", ZOL_FILE_MANAGEMENT_LIBRARY, "--root", tree.path(), "ls"}),
              (Outcome{0, "FileMConfigData=1\n", ""}));
}

TEST_F(CommandLineTest, TakesPoliciesThatReserveDirectories)
{
    const zoltest::TemporaryTree other;
    tree.directory("logs");
    const std::string model =
        other.file("model.json", R"({"FileGroupPolicy": [{"id": "1", "fileGroup": ["FileGroup=logs"]}]})");
    EXPECT_EQ(run({"--root", tree.path(), "--policies", model, "get", "logs", "reservedByPolicy"}),
              (Outcome{0, "reservedByPolicy: " + root + ",FileGroupPolicy=1\n", ""}));
    EXPECT_EQ(run({"--root", tree.path(), "--policies", other.file("bad.json", "[]"), "ls"}),
              (Outcome{2, "",
                       "filem: the policies " + other.path("bad.json") +
                           " can't be used: the document must be an object\n"}));
    EXPECT_EQ(
        run({"--root", tree.path(), "--policies", other.path("none"), "ls"}),
        (Outcome{2, "", "filem: the policies " + other.path("none") + " can't be used: it can't be read\n"}));
}

TEST_F(CommandLineTest, IsRefusedWhereItMakesNoSense)
{
    EXPECT_EQ(filem({"list"}), (Outcome{2, "", "filem: there is no command list, see filem --help\n"}));
    EXPECT_EQ(filem({"stat"}), (Outcome{2, "", "filem: stat: PLACE is required, see filem stat --help\n"}));
    EXPECT_EQ(filem({"get", "a"}).exitCode, 2);
    EXPECT_EQ(filem({"pwd", "a"}).exitCode, 2);
    EXPECT_EQ(filem({"ls", "--wrong"}).exitCode, 2);
    EXPECT_EQ(filem({"commit"}), (Outcome{2, "", "filem: commit makes sense in a session only\n"}));
    EXPECT_EQ(filem({"--wrong", "ls"}),
              (Outcome{2, "", "filem: there is no option --wrong, see filem --help\n"}));
    EXPECT_EQ(filem({"--script", tree.path("missing")}),
              (Outcome{2, "", "filem: the script " + tree.path("missing") + " can't be read\n"}));
    EXPECT_EQ(filem({"--script", tree.path()}),
              (Outcome{1, "", "filem: the script can't be read to its end\n"}));
    EXPECT_EQ(filem({"-c", "ls", "ls"}).exitCode, 2);
    EXPECT_EQ(filem({"-c", "ls", "--script", "x"}).exitCode, 2);
    EXPECT_EQ(filem({"--script", tree.path(), "ls"}),
              (Outcome{2, "", "filem: there is a command beside the script, see filem --help\n"}));
    EXPECT_EQ(filem({"--config", tree.path(), "ls"}).exitCode, 2) << "beside a root";
    EXPECT_EQ(run({"--root"}).exitCode, 2);
}

TEST_F(CommandLineTest, ExplainsItselfWithoutAHost)
{
    const Outcome help = run({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_EQ(help.err, "");
    EXPECT_THAT(help.out, HasSubstr("--root DIR"));
    EXPECT_THAT(help.out, HasSubstr("\n  rmtree "));
    EXPECT_THAT(help.out, HasSubstr("Exit codes:\n  0  done"));
    const Outcome ofVerb = run({"ls", "--help"});
    EXPECT_EQ(ofVerb.exitCode, 0);
    EXPECT_THAT(ofVerb.out, HasSubstr("lists directories and files"));
    EXPECT_EQ(run({"help", "ls"}), ofVerb);
    EXPECT_THAT(run({"help"}).out, HasSubstr("FileInformation"));
    EXPECT_EQ(run({"help", "nonsense"}), (Outcome{2, "", "filem: there is no command or class nonsense\n"}));
}

TEST_F(CommandLineTest, FailsIfItsOutputCanNotBeWritten)
{
    const Outcome outcome = zoltest::runProcess(
        {"/bin/sh", "-c", std::string(FILEM_PROGRAM) + " --root " + tree.path() + " ls >/dev/full"});
    EXPECT_EQ(outcome, (Outcome{1, "", "filem: standard output can't be written\n"}));
}

TEST_F(CommandLineTest, LeavesTheLogToTheEnvironment)
{
    ProcessSurroundings surroundings;
    surroundings.environment = {{"ZOL_LOG_FILE", tree.path("log")}, {"PATH", tree.path()}};
    EXPECT_EQ(zoltest::runProcess({FILEM_PROGRAM, "ls"}, surroundings).exitCode, 5);
    EXPECT_TRUE(tree.exists("log"));
}

TEST_F(CommandLineTest, KeepsTheLogFromTheOperatorUnlessItIsWanted)
{
    tree.link("d/nowhere", "missing");
    const Texts words = {FILEM_PROGRAM, "--root", tree.path(), "count", "d", "FileInformation"};
    EXPECT_EQ(zoltest::runProcess(words), (Outcome{0, "0\n", ""}));
    ProcessSurroundings surroundings;
    surroundings.environment = {{"ZOL_LOG_LEVEL", "4"}};
    EXPECT_THAT(zoltest::runProcess(words, surroundings).err, HasSubstr("refers to a non existing target"));
}
