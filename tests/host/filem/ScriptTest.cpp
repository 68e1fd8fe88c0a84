#include "Filem.h"

#include <string>

namespace
{

class ScriptTest : public Filem
{
protected:
    Outcome terminal(const std::string& lines) const
    {
        zoltest::ProcessSurroundings surroundings;
        surroundings.input = lines;
        surroundings.atTerminal = true;
        return run({"--root", tree.path()}, surroundings);
    }

    const std::string notCommitted = "filem: no commit: what was asked for since the last one is forgotten\n";
};

} // namespace

TEST_F(ScriptTest, SeesItsOwnChangesBeforeTheyAreCommitted)
{
    tree.file("d/a.log");
    tree.file("d/b.txt");
    EXPECT_EQ(script("# a comment\n"
                     "\n"
                     "create FileGroup=new   # with an object below\n"
                     "create 'FileGroup=new,FileGroup=a\\2Bb'\n"
                     "exists FileGroup=new\n"
                     "exists FileGroup=none\n"
                     "ls\n"
                     "remove-file FileGroup=d '.*\\.log'\n"
                     "ls FileGroup=d\n"
                     "commit\n"
                     "ls \"FileGroup=new\"\n"),
              (Outcome{0,
                       "true\nfalse\nFileMConfigData=1\nFileGroup=d\nFileGroup=new\n"
                       "true\nFileInformation=b.txt\nFileGroup=a\\2Bb\n",
                       ""}));
    EXPECT_EQ(tree.listing(), (Texts{"d d", "d new", "d new/a+b", "f d/b.txt 1"}));
}

TEST_F(ScriptTest, OfAFileIsRunLikeStandardInput)
{
    const zoltest::TemporaryTree other;
    EXPECT_EQ(run({"--root", tree.path(), "--script", other.file("script", "create FileGroup=a\r\ncommit")}),
              (Outcome{0, "", ""}));
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}

TEST_F(ScriptTest, ThatEndsWithoutACommitChangesNothing)
{
    tree.file("d/f");
    EXPECT_EQ(script("create FileGroup=a\nremove FileGroup=d\n"), (Outcome{0, "true\n", notCommitted}));
    EXPECT_EQ(script("create FileGroup=a\nquit\ncommit\n"), (Outcome{0, "", notCommitted}));
    EXPECT_EQ(script("ls FileGroup=d\n"), (Outcome{0, "FileInformation=f\n", ""})) << "nothing was asked for";
    EXPECT_EQ(tree.listing(), (Texts{"d d", "f d/f 1"}));
}

TEST_F(ScriptTest, BeginsATransactionAfterEachCommitOrAbort)
{
    EXPECT_EQ(
        script("create FileGroup=a\ncommit\ncreate FileGroup=b\nabort\ncreate FileGroup=c\ncommit\ncommit\n"
               "abort\nexists FileGroup=b\n"),
        (Outcome{0, "false\n", ""}));
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d c"}));
}

TEST_F(ScriptTest, EndsAtTheFirstFailureAndNamesItsLine)
{
    EXPECT_EQ(
        script("create FileGroup=a\ncommit\n# three\ncreate FileGroup=b\ncreate FileGroup=a|b\ncommit\n"),
        (Outcome{1, "",
                 "filem: line 5: can't create, on " + root +
                     ",FileGroup=a|b: FileGroup contains illegal character(|)\n"}));
    EXPECT_EQ(script("delete FileGroup=x\n"),
              (Outcome{4, "", "filem: line 1: can't delete, on " + root + ",FileGroup=x: no such object\n"}));
    EXPECT_EQ(
        script("ls FileGroup=/\n"),
        (Outcome{2, "",
                 "filem: line 1: can't ls, on FileGroup=/: the value \"/\" holds a slash and would leave its "
                 "directory\n"}));
    EXPECT_EQ(script("create FileGroup=b\n\nls 'a\n"),
              (Outcome{2, "", "filem: line 3: a single quote has no end\n"}));
    EXPECT_EQ(script("list\n"), (Outcome{2, "", "filem: line 1: there is no command list, see help\n"}));
    EXPECT_EQ(script("delete\n"), (Outcome{2, "", "filem: line 1: usage: delete DN\n"}));
    EXPECT_EQ(script("ls a b\n"), (Outcome{2, "", "filem: line 1: usage: ls [DN]\n"}));
    EXPECT_EQ(tree.listing(), Texts{"d a"}) << "nothing but what was committed";
}

TEST_F(ScriptTest, GoesOnNoFurtherThanACommitThatFails)
{
    tree.file("f");
    EXPECT_EQ(
        script("create FileGroup=a\ncreate FileGroup=f,FileGroup=b\ncommit\ncreate FileGroup=c\ncommit\n"),
        (Outcome{1, "",
                 "filem: line 3: can't commit: a step failed; what was done before it stays, the rest is "
                 "forgotten\n"}));
    EXPECT_EQ(tree.listing(), (Texts{"d a", "f f 1"}));
}

TEST_F(ScriptTest, AtATerminalPromptsAndGoesOnAfterAFailure)
{
    EXPECT_EQ(
        terminal("create FileGroup=a\nls FileGroup=x\ncommit\n\nls\nhelp ls\nquit\n"),
        (Outcome{0,
                 "FileMConfigData=1\nFileGroup=a\nls [DN]\n  lists the children of an object, of the root "
                 "without DN\n",
                 "filem> filem> filem: can't ls, on " + root +
                     ",FileGroup=x: no such object\nfilem> filem> filem> filem> filem> "}));
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}

TEST_F(ScriptTest, AtATerminalForgetsAtItsEndWhatIsNotCommitted)
{
    EXPECT_EQ(terminal("create FileGroup=a\n\x04"), (Outcome{0, "", "filem> filem> \n" + notCommitted}));
    EXPECT_EQ(tree.listing(), Texts{});
}

TEST_F(ScriptTest, HasAHelpForEveryCommandAndClass)
{
    const Outcome overview = script("help\n");
    EXPECT_EQ(overview.exitCode, 0);
    for (const std::string name :
         {"ls", "stat", "files", "exists", "count", "create", "delete", "remove", "remove-file", "commit",
          "abort", "help", "quit", "FileM", "FileMConfigData", "FileGroup", "FileInformation"})
    {
        EXPECT_NE(overview.out.find("\n  " + name + " "), std::string::npos) << name;
        const Outcome own = script("help " + name + "\n");
        EXPECT_EQ(own.exitCode, 0) << name;
        EXPECT_EQ(own.out.substr(0, name.size()), name);
    }
    EXPECT_EQ(script("help FileInformation\n"),
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
    EXPECT_EQ(script("help nonsense\n"),
              (Outcome{2, "", "filem: line 1: there is no command or class nonsense\n"}));
}
