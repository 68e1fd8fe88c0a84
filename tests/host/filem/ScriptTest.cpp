#include "Filem.h"

#include <gmock/gmock.h>
#include <string>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{

class ScriptTest : public Filem
{
protected:
    Outcome script(const std::string& lines, const Texts& options = {}) const
    {
        Texts words = {"--root", tree.path()};
        words.insert(words.end(), options.begin(), options.end());
        zoltest::ProcessSurroundings surroundings;
        surroundings.input = lines;
        return run(words, surroundings);
    }

    static Outcome failed(int code, const std::string& text) { return {code, "", "filem: " + text + "\n"}; }

    const std::string noCommit = "no commit: what is staged is dropped";
};

} // namespace

TEST_F(ScriptTest, SeesItsOwnChangesBeforeTheyAreCommitted)
{
    tree.file("d/a.log");
    tree.file("d/b.txt");
    const Outcome outcome = script("# a comment\n"
                                   "\n"
                                   "mkdir new   # with an object below\n"
                                   "mkdir 'new/a\\2Bb'\n"
                                   "exists new\n"
                                   "exists none\n"
                                   "ls\n"
                                   "rm --matching '.*\\.log' d\n"
                                   "ls d; ls -a d\n"
                                   "commit\n"
                                   "ls \"new\"\n");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_THAT(outcome.out, StartsWith("true\nfalse\nFileMConfigData=1\nd/\nnew/  +\n"
                                        "b.txt\n"
                                        "b.txt\n- a.log  (staged to be removed)\n"
                                        "done     - d/a.log\n"
                                        "done     + new/  drwxrwx---\n"
                                        "done     + new/a+b/  drwxrwx---\n"
                                        "3 done: 2 directories made, 1 file (1) removed, "));
    EXPECT_THAT(outcome.out, testing::EndsWith("\n'a\\2Bb/'\n"));
    EXPECT_EQ(tree.listing(), (Texts{"d d", "d new", "d new/a+b", "f d/b.txt 1"}));
}

TEST_F(ScriptTest, ComesFromAFileOrAnOptionAsFromStandardInput)
{
    const zoltest::TemporaryTree other;
    const std::string file = other.file("script", "mkdir a\r\ncommit");
    EXPECT_EQ(run({"--root", tree.path(), "--script", file}).exitCode, 0);
    EXPECT_EQ(run({"--root", tree.path(), "-c", "mkdir b; mkdir c\ncommit"}).exitCode, 0);
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d b", "d c"}));
}

TEST_F(ScriptTest, ThatEndsWithoutACommitDropsWhatIsStagedAndFails)
{
    tree.file("d/f");
    EXPECT_EQ(script("mkdir a\nrmtree d\n"), failed(1, noCommit));
    EXPECT_EQ(script("mkdir a\nquit\ncommit\n"), failed(1, noCommit));
    EXPECT_EQ(script("ls d\n"), (Outcome{0, "f\n", ""})) << "nothing is staged";
    EXPECT_EQ(tree.listing(), (Texts{"d d", "f d/f 1"}));
}

TEST_F(ScriptTest, BeginsATransactionAfterEachCommitOrAbort)
{
    const Outcome outcome =
        script("mkdir a\ncommit\nmkdir b\nabort\nmkdir c\ncommit\ncommit\nabort\nexists b\n");
    EXPECT_EQ(outcome.exitCode, 4) << "of the last command";
    EXPECT_EQ(outcome.err, "filem: nothing is staged\n");
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d c"}));
}

TEST_F(ScriptTest, EndsAtTheFirstFailureAndNamesItsLine)
{
    const Outcome outcome = script("mkdir a\ncommit\n# three\nmkdir b\nmkdir a|b\ncommit\n");
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.err, "filem: line 5: there is no filter b; there are match, except and count\n");
    EXPECT_EQ(script("mkdir b\nmkdir 'a|b'\ncommit\n"),
              failed(1, "line 2: can't mkdir, on " + root +
                            ",FileGroup=a|b: FileGroup contains illegal character(|)"));
    EXPECT_EQ(script("rm x/y\n"),
              failed(4, "line 1: can't rm, on " + root + ",FileGroup=x,FileInformation=y: no such object"));
    EXPECT_EQ(script("ls FileGroup=/\n"),
              failed(2, "line 1: can't ls, on FileGroup=/: the value \"/\" holds a "
                        "slash and would leave its directory"));
    EXPECT_EQ(script("mkdir b\n\nls 'a\n"), failed(2, "line 3: a single quote has no end"));
    EXPECT_EQ(script("list\n"), failed(2, "line 1: there is no command list, see help"));
    EXPECT_EQ(script("rm\n"), failed(2, "line 1: rm: PLACE is required, see filem rm --help"));
    EXPECT_EQ(tree.listing(), Texts{"d a"}) << "nothing but what was committed";
}

TEST_F(ScriptTest, LetsALineFailThatHasADashInFront)
{
    const Outcome outcome = script("mkdir a\n-rm none/x\ncommit\n");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.err, StartsWith("filem: line 2: can't rm, on "));
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}

TEST_F(ScriptTest, KeepsGoingIfItIsToldToAndEndsWithTheFirstCode)
{
    const Outcome outcome = script("rm none/x\nls 'a\nmkdir a\ncommit\n", {"--keep-going"});
    EXPECT_EQ(outcome.exitCode, 4);
    EXPECT_THAT(outcome.err, HasSubstr("\nfilem: line 2: "));
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}

TEST_F(ScriptTest, StagesSeveralPlacesTogetherOrNotAtAll)
{
    tree.file("d/a");
    tree.file("d/b");
    const Outcome outcome = script("mkdir e\n-rm d/a d/b d/none\nstatus\nabort\n");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.out, "mkdir e\n");
}

TEST_F(ScriptTest, ShowsWithDiffWhatACommitWouldDoAndWhatCancelsOut)
{
    tree.file("d/f", "12345");
    tree.directory("empty");
    EXPECT_EQ(script("diff\n"), (Outcome{0, "nothing changes\n", ""}));
    EXPECT_EQ(script("rm d/f\nmkdir n\nmkdir gone\nrmdir gone\nrmdir empty\nmkdir empty\ndiff\nabort\n").out,
              "- d/f  5\n"
              "+ n/  drwxrwx---\n"
              "= gone/  made and removed again: nothing is done\n"
              "= empty/  removed and made again: stays as it is, with its content\n"
              "1 directory to be made, 1 file (5) to be removed\n");
    EXPECT_EQ(script("mkdir n\ndiff\nabort\ndiff\n").exitCode, 0);
}

TEST_F(ScriptTest, ListsWithStatusWhatIsStagedAndWhatHasChangedUnderIt)
{
    tree.file("d/f");
    const std::string commands = "rm d/f\nmkdir new\nrmtree d\nstatus\n";
    EXPECT_EQ(script(commands + "abort\n").out, "rm d/f\nmkdir new\nrmtree d\n");
    EXPECT_EQ(script("status\n").out, "nothing is staged\n");
}

TEST_F(ScriptTest, StagesAgainWhatAnAbortDropped)
{
    tree.file("d/a.log");
    EXPECT_EQ(script("restage\n"), failed(1, "line 1: nothing was dropped that could be staged again"));
    const Outcome outcome = script("mkdir new\nrm --matching 'a.*' d\nabort\nrestage\ncommit | count\n");
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "mkdir new\nrm --matching 'a.*' d\n3\n");
    EXPECT_EQ(tree.listing(), (Texts{"d d", "d new"}));
}

TEST_F(ScriptTest, GoesAboutInTheTree)
{
    tree.file("d/sub/f");
    EXPECT_EQ(
        script("cd d/sub\npwd\nls\nup\nls\nls sub/f\ntop\npwd\ncd FileGroup=d\ncd ../d\ncd\npwd\n"),
        (Outcome{0, root + ",FileGroup=d,FileGroup=sub\nf\nsub/\nf\n" + root + "\n" + root + "\n", ""}));
    EXPECT_EQ(script("cd d/none\n"),
              failed(4, "line 1: can't cd, on " + root +
                            ",FileGroup=d,FileGroup=none: there is no such directory"));
}

TEST_F(ScriptTest, NotesEachTransactionInTheAuditFile)
{
    const zoltest::TemporaryTree other;
    tree.file("d/f");
    const std::string audit = other.path("audit");
    EXPECT_EQ(
        script("mkdir new\ncommit -m 'for the \"books\"'\nrm d/f\nabort\n", {"--audit", audit}).exitCode, 0);
    EXPECT_EQ(run({"--root", tree.path(), "--audit", audit, "rm", "-n", "d/f"}).exitCode, 1);
    EXPECT_EQ(run({"--root", tree.path(), "--audit", audit, "rm", "-m", "gone", "d/f"}).exitCode, 0);
    EXPECT_EQ(run({"--root", tree.path(), "--audit", audit, "ls"}).exitCode, 0) << "no change, no line";
    const Outcome lines = zoltest::runProcess(
        {"/usr/bin/sed", "s/\"time\":\"[^\"]*\",\"user\":\"[^\"]*\",\"uid\":[0-9]*/WHO/", audit});
    const std::string who = "{WHO,\"root\":\"" + tree.path() + "\",\"staged\":[";
    const std::string madeItem = R"({"operation":"make directory","path":")" + tree.path("new") +
                                 R"(/","result":"done","why":"","mode":"drwxrwx---"})";
    const std::string removedItem =
        R"({"operation":"remove file","path":")" + tree.path("d/f") + R"(","result":"done","why":""})";
    const std::string made =
        R"({"verb":"mkdir","dn":")" + root + R"(,FileGroup=new","path":")" + tree.path("new") + R"(/"}])";
    const std::string removed = R"({"verb":"rm","dn":")" + root +
                                R"(,FileGroup=d,FileInformation=f","path":")" + tree.path("d/f") + R"("}])";
    EXPECT_EQ(lines.out, who + made + R"(,"outcome":"committed","items":[)" + madeItem +
                             R"(],"comment":"for the \"books\""})" + "\n" + who + removed +
                             R"(,"outcome":"aborted"})" + "\n" + who + removed + R"(,"outcome":"dry run"})" +
                             "\n" + who + removed + R"(,"outcome":"committed","items":[)" + removedItem +
                             R"(],"comment":"gone"})" + "\n");
    EXPECT_EQ(script("ls\n", {"--audit", tree.path("none/audit")}).exitCode, 1);
}

TEST_F(ScriptTest, HasAHelpForEveryVerbAndClass)
{
    const Outcome overview = script("help\n");
    EXPECT_EQ(overview.exitCode, 0);
    for (const std::string name : {"ls",
                                   "tree",
                                   "find",
                                   "stat",
                                   "get",
                                   "exists",
                                   "count",
                                   "why",
                                   "mkdir",
                                   "rmdir",
                                   "rm",
                                   "rmtree",
                                   "delete",
                                   "action",
                                   "diff",
                                   "status",
                                   "commit",
                                   "abort",
                                   "restage",
                                   "cd",
                                   "up",
                                   "top",
                                   "pwd",
                                   "help",
                                   "quit",
                                   "FileM",
                                   "FileMConfigData",
                                   "FileGroup",
                                   "FileInformation"})
    {
        EXPECT_THAT(overview.out, testing::ContainsRegex("\n  " + name + "[ ,]"));
        EXPECT_EQ(script("help " + name + "\n").exitCode, 0) << name;
    }
    EXPECT_EQ(script("? FileInformation\n"),
              (Outcome{0,
                       "FileInformation: a file in a directory\n"
                       "\n"
                       "Attributes:\n"
                       "  fileInformationId  text: value of the name\n"
                       "  modificationTime   text: last change of content or permissions, local time\n"
                       "  size               number: bytes\n"
                       "  type               text: extension of the name, without the dot\n"
                       "  open               true or false: always false\n"
                       "\n"
                       "Actions:\n"
                       "  remove  deletes the file\n",
                       ""}));
}
