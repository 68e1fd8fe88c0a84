#include "Filem.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <string>

using testing::HasSubstr;
using testing::StartsWith;

namespace
{

class ChangingTest : public Filem
{
protected:
    static Outcome refused(const std::string& verb, const std::string& below, const std::string& why)
    {
        return {1, "", failure(verb, root + "," + below, why)};
    }

    const Outcome silence = {0, "", ""};
};

} // namespace

TEST_F(ChangingTest, MkdirMakesDirectoriesTogetherOrNotAtAll)
{
    EXPECT_EQ(filem({"mkdir", "a", "a/b", "FileGroup=c\\2Bd"}), silence);
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d a/b", "d c+d"}));
    EXPECT_EQ(tree.mode("a/b"), 0770U);
    EXPECT_EQ(filem({"mkdir", "e", "f|g"}),
              refused("mkdir", "FileGroup=f|g", "FileGroup contains illegal character(|)"));
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d a/b", "d c+d"}));
}

TEST_F(ChangingTest, CreateIsMkdir)
{
    EXPECT_EQ(filem({"create", "FileGroup=new"}), silence);
    EXPECT_EQ(tree.listing(), Texts{"d new"});
    EXPECT_EQ(filem({"create", "FileGroup=.."}),
              (Outcome{2, "", failure("mkdir", "FileGroup=..", "the value \"..\" would leave the tree")}));
}

TEST_F(ChangingTest, MkdirWithParentsMakesThemWithTheirMode)
{
    EXPECT_EQ(filem({"mkdir", "a/b"}),
              (Outcome{4, "",
                       failure("mkdir", root + ",FileGroup=a,FileGroup=b",
                               "the directory above it isn't there; -p makes it too")}));
    EXPECT_EQ(filem({"mkdir", "-p", "a/b/c", "a/d"}), silence);
    EXPECT_EQ(filem({"mkdir", "-p", "a/b"}), silence) << "is there already";
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d a/b", "d a/b/c", "d a/d"}));
    EXPECT_EQ(tree.mode("a"), 0770U);
}

TEST_F(ChangingTest, MkdirSaysWhyNot)
{
    tree.file("d/.filemnodirectorycreate");
    tree.file("f");
    const auto before = tree.listing();
    EXPECT_EQ(filem({"mkdir", "d"}), refused("mkdir", "FileGroup=d", "it is there already"));
    EXPECT_EQ(filem({"mkdir", "d/new"}), refused("mkdir", "FileGroup=d,FileGroup=new",
                                                 "FileGroup does not allow child FileGroup to be created"));
    EXPECT_EQ(filem({"mkdir", "..."}), refused("mkdir", "FileGroup=...", "FileGroup name not allowed (...)"));
    EXPECT_EQ(filem({"mkdir", "f/new"}),
              refused("mkdir", "FileGroup=f,FileGroup=new", "what stands above it is no directory"));
    EXPECT_EQ(filem({"mkdir", "/"}).exitCode, 2);
    EXPECT_EQ(filem({"mkdir", "f"}), refused("mkdir", "FileGroup=f", "something else of this name is there"));
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(ChangingTest, RmRemovesFilesOfAnyName)
{
    for (const std::string name : {"f", "a=b", "x,y", "p?\?q", "p;q", "n\nl", "r.s"})
    {
        tree.file("d/" + name);
    }
    EXPECT_EQ(filem({"rm", "d/f"}), silence);
    EXPECT_EQ(filem({"rm", "FileGroup=d,FileInformation=a?\?b"}), silence);
    EXPECT_EQ(filem({"rm", "d/x,y"}), silence);
    EXPECT_EQ(filem({"rm", "d/n\nl"}), silence);
    EXPECT_EQ(filem({"rm", "d/p?\?q"}), silence);
    EXPECT_EQ(tree.listing(), (Texts{"d d", "f d/p;q 1", "f d/r.s 1"}));
}

TEST_F(ChangingTest, RmSaysWhyNot)
{
    tree.file("d/f");
    tree.file("d/sub/g");
    tree.file("d/.filemnodirectorydelete");
    tree.link("d/l", tree.path("d/f"));
    tree.file("top");
    const auto before = tree.listing();
    EXPECT_EQ(filem({"rm", "d/x"}), missing("rm", "FileGroup=d,FileInformation=x"));
    EXPECT_EQ(filem({"rm", "d/sub"}),
              refused("rm", "FileGroup=d,FileInformation=sub",
                      "it is a directory, which would go with all that is in it, whatever markers say"));
    EXPECT_EQ(filem({"rm", "d"}),
              refused("rm", "FileInformation=d",
                      "it is a directory, which would go with all that is in it, whatever markers say"));
    EXPECT_EQ(filem({"rm", "none"}), missing("rm", "FileInformation=none"));
    EXPECT_EQ(filem({"rm", "d/l"}),
              refused("rm", "FileGroup=d,FileInformation=l", "it is a symbolic link to " + tree.path("d/f")));
    EXPECT_EQ(filem({"rm", "d/.filemnodirectorydelete"}).exitCode, 4);
    EXPECT_EQ(filem({"rm", "top"}),
              (Outcome{1, "",
                       failure("rm", root + ",FileInformation=top",
                               "a file that lies directly in the root is no object: its name would stand for "
                               "the root with all that is in it")}));
    EXPECT_EQ(filem({"rm", root + ",FileInformation=top"}).exitCode, 2);
    EXPECT_EQ(filem({"rm", "--yes", "d/f", "d/x"}).exitCode, 4) << "and none of them is removed";
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(ChangingTest, RmMatchingRemovesTheFilesWhoseWholeNameMatches)
{
    for (const std::string name : {"a.log", "b.log", "log", "b.log.1", "sub/c.log"})
    {
        tree.file("d/" + name);
    }
    EXPECT_EQ(filem({"rm", "--yes", "--matching", ".*\\.log", "d"}), silence);
    EXPECT_EQ(filem({"rm", "--matching", ".*\\.log", "d"}), silence) << "nothing matches";
    EXPECT_EQ(tree.listing(), (Texts{"d d", "d d/sub", "f d/b.log.1 1", "f d/log 1", "f d/sub/c.log 1"}));
    EXPECT_EQ(filem({"rm", "--matching", "(", "d"}),
              refused("rm", "FileGroup=d", "Invalid regular expression"));
    EXPECT_EQ(filem({"rm", "--matching", "f", "x"}), missing("rm", "FileGroup=x"));
    EXPECT_EQ(filem({"rm", "--matching", "f", "/"}),
              (Outcome{2, "", failure("rm", root, "a FileM has no action removeFile")}));
}

TEST_F(ChangingTest, RmMatchingMeansTheWholeNameAlsoWithAlternatives)
{
    for (const std::string name : {"a", "b", "ab", "ax", "xb"})
    {
        tree.file("d/" + name);
    }
    EXPECT_EQ(filem({"find", "--matching", "a|b"}).out, "d/a\nd/b\n");
    EXPECT_EQ(filem({"rm", "--yes", "--matching", "a|b", "d"}), silence);
    EXPECT_EQ(tree.listing(), (Texts{"d d", "f d/ab 1", "f d/ax 1", "f d/xb 1"}));
}

TEST_F(ChangingTest, AnExpressionThatMatchesEveryFileWarns)
{
    tree.file("d/a");
    tree.file("d/b");
    EXPECT_EQ(filem({"rm", "-y", "--matching", ".*", "d"}),
              (Outcome{0, "", "filem: the expression matches every file of " + root + ",FileGroup=d\n"}));
}

TEST_F(ChangingTest, RmdirRemovesDirectoriesWithoutFiles)
{
    tree.directory("d/sub/sub");
    tree.directory("e=");
    EXPECT_EQ(filem({"rmdir", "e?\?"}), silence);
    EXPECT_EQ(filem({"rmdir", "--yes", "FileGroup=d"}), silence);
    EXPECT_EQ(tree.listing(), Texts{});
}

TEST_F(ChangingTest, RmdirSaysWhyNot)
{
    tree.file("d/sub/g");
    tree.file("d/sub/h");
    tree.file("kept/.filemnohousekeeping");
    tree.link("l", tree.path("d"));
    tree.directory("a,b");
    const auto before = tree.listing();
    EXPECT_EQ(filem({"rmdir", "kept"}),
              refused("rmdir", "FileGroup=kept", "FileGroup is not allowed to be deleted"));
    EXPECT_EQ(filem({"rmdir", "d"}),
              refused("rmdir", "FileGroup=d", "it isn't empty: d/sub/g and another file would remain"));
    EXPECT_EQ(filem({"rmdir", "l"}),
              refused("rmdir", "FileGroup=l", "it is a symbolic link to " + tree.path("d")));
    EXPECT_EQ(filem({"rmdir", "d/sub/g"}),
              refused("rmdir", "FileGroup=d,FileGroup=sub,FileGroup=g", "it is no directory"));
    EXPECT_EQ(filem({"rmdir", "x"}), missing("rmdir", "FileGroup=x"));
    EXPECT_EQ(filem({"rmdir", "/"}),
              (Outcome{1, "", failure("rmdir", root, "the root of the tree can't be removed")}));
    EXPECT_EQ(filem({"rmdir", "a,b"}).exitCode, 1);
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(ChangingTest, DeleteTakesFilesAndDirectoriesWithoutFiles)
{
    tree.file("d/f");
    tree.directory("e");
    EXPECT_EQ(filem({"delete", "-y", "FileGroup=d,FileInformation=f", "FileGroup=e"}), silence);
    EXPECT_EQ(tree.listing(), Texts{"d d"});
    EXPECT_EQ(
        filem({"delete", "FileMConfigData=1"}),
        (Outcome{2, "",
                 failure("delete", root + ",FileMConfigData=1", "a FileMConfigData can't be removed")}));
}

TEST_F(ChangingTest, RmtreeRemovesDirectoriesWithAllInThem)
{
    tree.file("d/sub/f");
    tree.file("d/.filemnodirectorydelete");
    tree.link("l", tree.path("d"));
    EXPECT_EQ(filem({"rmtree", "l"}),
              refused("rmtree", "FileGroup=l", "it is a symbolic link to " + tree.path("d")));
    EXPECT_EQ(filem({"rmtree", "x"}), missing("rmtree", "FileGroup=x"));
    EXPECT_EQ(filem({"rmtree", "--yes", "d"}), silence);
    EXPECT_EQ(tree.listing(), Texts{"l l -> " + tree.path("d")});
}

TEST_F(ChangingTest, RmtreeOfTheRootWantsToBeForced)
{
    tree.file("root/d/f");
    const Texts command = {"--root", tree.path("root"), "rmtree", "--yes", "/"};
    const Outcome refusal = run(command);
    EXPECT_EQ(refusal.exitCode, 1);
    EXPECT_EQ(refusal.err, failure("rmtree", root,
                                   "it is the root: all of the tree would go, the root directory too; "
                                   "--force-root does it"));
    EXPECT_TRUE(tree.exists("root/d/f"));
    Texts forced = command;
    forced.emplace_back("--force-root");
    EXPECT_EQ(run(forced), silence);
    EXPECT_EQ(tree.listing(), Texts{});
}

TEST_F(ChangingTest, ActionDoesWhatItsVerbDoes)
{
    tree.file("d/a.log");
    tree.file("d/b");
    EXPECT_EQ(filem({"action", "FileGroup=d", "removeFile", "a.*"}), silence);
    EXPECT_EQ(tree.listing(), (Texts{"d d", "f d/b 1"}));
    EXPECT_EQ(filem({"action", "d", "removeFile"}),
              (Outcome{2, "", "filem: the action removeFile takes one argument, an expression\n"}));
    EXPECT_EQ(filem({"action", "d", "remove", "x"}),
              (Outcome{2, "", "filem: the action remove takes no argument\n"}));
    EXPECT_EQ(
        filem({"action", "d", "explode"}),
        (Outcome{2, "", failure("action", root + ",FileGroup=d", "a FileGroup has no action explode")}));
    EXPECT_EQ(filem({"action", "d/b", "removeFile", "b"}).exitCode, 2);
    EXPECT_EQ(filem({"action", "-y", "d/b", "remove"}), silence);
    EXPECT_EQ(filem({"action", "-y", "d", "remove"}), silence);
    EXPECT_EQ(tree.listing(), Texts{});
}

TEST_F(ChangingTest, MoreThanOneObjectWantsAYesWhereNobodyCanBeAsked)
{
    tree.file("d/a");
    tree.file("d/b", "12");
    const auto before = tree.listing();
    EXPECT_EQ(filem({"rm", "d/a", "d/b"}),
              (Outcome{1, "", "filem: more than one object: 2 files (3) to be removed; --yes does it\n"}));
    EXPECT_EQ(
        filem({"rmtree", "d"}),
        (Outcome{1, "",
                 "filem: more than one object: 2 files (3) and 1 directory to be removed; --yes does it\n"}));
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(ChangingTest, DryRunShowsWhatWouldBeDoneAndDoesNothing)
{
    tree.file("d/a", std::string(2000, 'x'));
    tree.file("d/sub/.filemnohousekeeping", "");
    const auto before = tree.listing();
    EXPECT_EQ(filem({"rmtree", "-n", "d"}), (Outcome{1,
                                                     "- d/  with 2 files (2.0K), 1 directory, 1 marker\n"
                                                     "  - d/a  2.0K\n"
                                                     "  - d/sub/  directory\n"
                                                     "  - d/sub/.filemnohousekeeping  0\n"
                                                     "2 files (2.0K) and 2 directories to be removed\n",
                                                     ""}));
    EXPECT_EQ(filem({"mkdir", "-n", "e"}), (Outcome{1, "+ e/  drwxrwx---\n1 directory to be made\n", ""}));
    EXPECT_EQ(filem({"mkdir", "-n", "-p", "d"}), (Outcome{0, "nothing changes\n", ""}));
    EXPECT_EQ(filem({"rmdir", "-n", "d"}).exitCode, 3) << "a refusal is above both";
    EXPECT_EQ(filem({"rm", "-n", "d/x"}).exitCode, 4);
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(ChangingTest, DryRunTellsWhatCouldNotBeDone)
{
    tree.file("d/a");
    const zoltest::TemporaryTree other;
    // a name that a commit can't make: with the parent's path it is longer than the system takes
    const std::string longName(255, 'x');
    std::string path;
    for (int i = 0; i < 16; ++i)
    {
        path += longName + "/";
    }
    EXPECT_EQ(filem({"mkdir", "-p", "-n", path}).exitCode, 3);
}

TEST_F(ChangingTest, TellsWhatWasDoneAlsoIfTheAuditFileIsFull)
{
    tree.file("d/a");
    const Outcome outcome = run({"--root", tree.path(), "--audit", "/dev/full", "rm", "-v", "d/a"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.out, StartsWith("done     - d/a\n"));
    EXPECT_THAT(outcome.err,
                HasSubstr("the audit file can't be written to its end: No space left on device"));
}

TEST_F(ChangingTest, MkdirWarnsOfTheNameOfAMarker)
{
    EXPECT_EQ(
        filem({"mkdir", ".filemnohousekeeping"}),
        (Outcome{0, "",
                 "filem: .filemnohousekeeping will count as a marker of the directory that it is in\n"}));
}

TEST_F(ChangingTest, VerboseTellsWhatBecameOfEachObject)
{
    tree.file("d/a", "12345");
    const Outcome outcome = filem({"rm", "-v", "d/a"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.out, StartsWith("done     - d/a\n"
                                        "1 done: 1 file (5) removed, "));
    const auto lines = filem({"mkdir", "--json", "e"}).out;
    const auto item = nlohmann::json::parse(lines.substr(0, lines.find('\n')));
    EXPECT_EQ(item["result"], "done");
    EXPECT_EQ(item["mode"], "drwxrwx---");
}

TEST_F(ChangingTest, WhatLinksLeadToIsLeftAloneUnlessItIsWanted)
{
    const zoltest::TemporaryTree other;
    other.file("f");
    tree.link("out", other.path());
    const std::string why =
        "out is a symbolic link that leads out of the tree; --through-links goes through links";
    EXPECT_EQ(filem({"rm", "out/f"}), refused("rm", "FileGroup=out,FileInformation=f", why));
    EXPECT_EQ(filem({"mkdir", "out/new"}), refused("mkdir", "FileGroup=out,FileGroup=new", why));
    EXPECT_EQ(filem({"rm", "--matching", "f", "out"}), refused("rm", "FileGroup=out", why));
    EXPECT_EQ(filem({"rm", "--through-links", "out/f"}), silence);
    EXPECT_EQ(filem({"mkdir", "--through-links", "out/new"}), silence);
    EXPECT_EQ(other.listing(), Texts{"d new"});
}

TEST_F(ChangingTest, WhyTellsWhatWouldRefuseAndAllThatProtects)
{
    const zoltest::TemporaryTree other;
    const std::string model =
        other.file("model.json", R"({"FileGroupPolicy": [{"id": "1", "fileGroup": ["FileGroup=d"]}]})");
    tree.file("d/f");
    tree.file("d/.filemnohousekeeping");
    tree.file("d/sub/.filemnodirectorydelete");
    tree.file("free/f");
    const auto before = tree.listing();
    EXPECT_EQ(run({"--root", tree.path(), "--policies", model, "why", "rmdir", "d"}),
              (Outcome{1,
                       "rmdir d: refused: FileGroup is not allowed to be deleted\n"
                       "marker: .filemnohousekeeping is in it\n"
                       "marker below: d/sub/.filemnodirectorydelete, would go along with rmtree\n"
                       "files: 1 file in it or below, d/f\n"
                       "policy: " +
                           root + ",FileGroupPolicy=1 reserves it\n",
                       ""}));
    EXPECT_EQ(filem({"why", "rmtree", "d"}).exitCode, 0);
    EXPECT_EQ(
        filem({"why", "mkdir", "free"}),
        (Outcome{1, "mkdir free: refused: it is there already\nfiles: 1 file in it or below, free/f\n", ""}));
    EXPECT_EQ(filem({"why", "rm", "d/f"}),
              (Outcome{0, "rm d/f: nothing speaks against it\nmarker above: .filemnohousekeeping\n", ""}));
    EXPECT_EQ(filem({"why", "rm", "d/x"}).exitCode, 4);
    EXPECT_EQ(filem({"why", "ls", "d"}).exitCode, 2);
    EXPECT_EQ(tree.listing(), before);
}
