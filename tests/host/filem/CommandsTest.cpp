#include "Filem.h"

#include <string>

namespace
{

using CommandsTest = Filem;

} // namespace

TEST_F(CommandsTest, LsListsWhatIsBelowTheRoot)
{
    tree.directory("B"); // in no order, neither this way round nor the other
    tree.directory("logs");
    tree.directory("a+b,c");
    tree.file("not below a directory");
    const std::string all = "FileMConfigData=1\nFileGroup=B\nFileGroup=a\\2Bb?\?c\nFileGroup=logs\n";
    EXPECT_EQ(filem({"ls"}), (Outcome{0, all, ""}));
    EXPECT_EQ(filem({"ls", root}), (Outcome{0, all, ""}));
    EXPECT_EQ(filem({"ls", "FileMConfigData=1"}), (Outcome{0, "", ""}));
}

TEST_F(CommandsTest, LsListsDirectoriesAndThenFiles)
{
    tree.file("d/b.log");
    tree.file("d/a=b");
    tree.file("d/.hidden");
    tree.file("d/.filemnohousekeeping");
    tree.file("d/z/f");
    const std::string all =
        "FileGroup=z\nFileInformation=.hidden\nFileInformation=a?\?b\nFileInformation=b.log\n";
    EXPECT_EQ(filem({"ls", "FileGroup=d"}), (Outcome{0, all, ""}));
    EXPECT_EQ(filem({"ls", root + ",FileGroup=d"}), (Outcome{0, all, ""}));
    EXPECT_EQ(filem({"ls", "FileGroup=d,FileGroup=z"}), (Outcome{0, "FileInformation=f\n", ""}));
    EXPECT_EQ(filem({"ls", "FileGroup=d,FileInformation=b.log"}), (Outcome{0, "", ""}));
    EXPECT_EQ(filem({"ls", "FileGroup=e"}), missing("ls", "FileGroup=e"));
    EXPECT_EQ(filem({"ls", "FileGroup=d,FileInformation=c"}), missing("ls", "FileGroup=d,FileInformation=c"));
}

TEST_F(CommandsTest, StatShowsEveryAttributeInALine)
{
    tree.file("d/a.tar.gz", "12345");
    tree.file("d/README", "");
    const std::string gz = timeOf("d/a.tar.gz");
    const std::string readme = timeOf("d/README");
    EXPECT_EQ(filem({"stat", "FileGroup=d"}), (Outcome{0,
                                                       "fileGroupId: d\n"
                                                       "internalHousekeeping: false\n"
                                                       "reservedByPolicy:\n"
                                                       "files: {fileName: README, modificationTime: " +
                                                           readme +
                                                           ", fileType: , size: 0}\n"
                                                           "files: {fileName: a.tar.gz, modificationTime: " +
                                                           gz + ", fileType: gz, size: 5}\n",
                                                       ""}));
    EXPECT_EQ(filem({"stat", "FileGroup=d,FileInformation=a.tar.gz"}),
              (Outcome{0,
                       "fileInformationId: a.tar.gz\n"
                       "modificationTime: " +
                           gz + "\nsize: 5\ntype: gz\nopen: false\n",
                       ""}));
    EXPECT_EQ(filem({"stat", "FileGroup=d,FileInformation=README"}),
              (Outcome{0,
                       "fileInformationId: README\n"
                       "modificationTime: " +
                           readme + "\nsize: 0\ntype:\nopen: false\n",
                       ""}));
}

TEST_F(CommandsTest, StatFindsAFileByTheNameThatLsShows)
{
    tree.file("d/a=b.c", "12345");
    EXPECT_EQ(filem({"stat", "FileGroup=d,FileInformation=a?\?b.c"}),
              (Outcome{0,
                       "fileInformationId: a?\?b.c\nmodificationTime: " + timeOf("d/a=b.c") +
                           "\nsize: 5\ntype: c\nopen: false\n",
                       ""}));
}

TEST_F(CommandsTest, StatShowsWhatCanBeReadAndSaysWhatCanNot)
{
    tree.link("d/nowhere", "missing");
    EXPECT_EQ(filem({"stat", "FileGroup=d"}),
              (Outcome{1, "fileGroupId: d\ninternalHousekeeping: false\nreservedByPolicy:\n",
                       failure("stat", root + ",FileGroup=d",
                               "files: the directory can't be read, or a link in it leads nowhere")}));
}

TEST_F(CommandsTest, StatRefusesWhatIsNotThereAndWhatHasNoAttributes)
{
    tree.file("d/.filemnohousekeeping");
    tree.directory("d/sub");
    EXPECT_EQ(filem({"stat", "FileGroup=e"}), missing("stat", "FileGroup=e"));
    for (const std::string dn : {"FileGroup=d,FileInformation=c", "FileGroup=d,FileInformation=a?\?b",
                                 "FileGroup=d,FileInformation=.filemnohousekeeping"})
    {
        EXPECT_EQ(filem({"stat", dn}), missing("stat", dn));
    }
    EXPECT_EQ(
        filem({"stat", "FileGroup=d,FileInformation=sub"}),
        (Outcome{1, "", failure("stat", root + ",FileGroup=d,FileInformation=sub", "it is a directory")}));
    EXPECT_EQ(filem({"stat", root}), (Outcome{2, "", failure("stat", root, "a FileM has no attributes")}));
}

TEST_F(CommandsTest, FilesShowsATable)
{
    tree.file("d/a rather long name.log", "12345");
    tree.file("d/\xc3\xa9.txt", std::string(12345, 'x'));
    tree.file("d/line\nfeed", "");
    tree.file("d/=", "1");
    tree.file("d/.filemnodirectorydelete");
    tree.link("d/link", tree.path("d/="));
    tree.directory("d/sub");
    const auto time = [this](const std::string& name) { return timeOf("d/" + name) + "\n"; };
    EXPECT_EQ(filem({"files", "FileGroup=d"}),
              (Outcome{0,
                       "NAME                     SIZE  TYPE  TIME\n"
                       "=                           1        " +
                           time("=") + "a rather long name.log      5  log   " +
                           time("a rather long name.log") + "line\\x0afeed                0        " +
                           time("line\nfeed") + "link                        1        " + time("=") +
                           "\xc3\xa9.txt                   12345  txt   " + time("\xc3\xa9.txt"),
                       ""}));
    EXPECT_EQ(filem({"files", "FileGroup=d,FileGroup=sub"}), (Outcome{0, "", ""}));
}

TEST_F(CommandsTest, FilesRefusesWhatIsNoDirectory)
{
    tree.file("d/f");
    tree.link("e/nowhere", "missing");
    EXPECT_EQ(filem({"files", "FileGroup=x"}), missing("files", "FileGroup=x"));
    EXPECT_EQ(filem({"files", "FileGroup=d,FileInformation=f"}),
              (Outcome{2, "",
                       failure("files", root + ",FileGroup=d,FileInformation=f",
                               "a FileInformation has no attribute files")}));
    EXPECT_EQ(filem({"files", "FileGroup=e"}),
              (Outcome{1, "",
                       failure("files", root + ",FileGroup=e",
                               "the directory can't be read, or a link in it leads nowhere")}));
}

TEST_F(CommandsTest, ExistsPrintsItsAnswerAndExitsWithIt)
{
    tree.file("d/f");
    const Outcome yes = {0, "true\n", ""};
    const Outcome no = {4, "false\n", ""};
    EXPECT_EQ(filem({"exists", root}), yes);
    EXPECT_EQ(filem({"exists", "FileMConfigData=1"}), yes);
    EXPECT_EQ(filem({"exists", "FileGroup=d"}), yes);
    EXPECT_EQ(filem({"exists", "FileGroup=d,FileInformation=f"}), yes);
    EXPECT_EQ(filem({"exists", "FileGroup=e"}), no);
    EXPECT_EQ(filem({"exists", "FileGroup=d,FileInformation=g"}), no);
    EXPECT_EQ(filem({"exists", "FileGroup=d,FileGroup=f"}), no);
}

TEST_F(CommandsTest, CountCountsTheChildrenOfAClass)
{
    tree.file("d/f");
    tree.file("d/g");
    tree.directory("d/sub");
    EXPECT_EQ(filem({"count", root, "FileGroup"}), (Outcome{0, "1\n", ""}));
    EXPECT_EQ(filem({"count", "FileGroup=d", "FileInformation"}), (Outcome{0, "2\n", ""}));
    EXPECT_EQ(filem({"count", "FileGroup=d", "FileGroup"}), (Outcome{0, "1\n", ""}));
    EXPECT_EQ(filem({"count", "FileGroup=e", "FileGroup"}), missing("count", "FileGroup=e"));
    EXPECT_EQ(filem({"count", root, "FileInformation"}),
              (Outcome{2, "", failure("count", root, "there is no FileInformation below a FileM")}));
}

TEST_F(CommandsTest, CreateCreatesADirectory)
{
    EXPECT_EQ(filem({"create", "FileGroup=new"}), (Outcome{0, "", ""}));
    EXPECT_EQ(filem({"create", "FileGroup=new,FileGroup=a\\2Bb"}), (Outcome{0, "", ""}));
    EXPECT_EQ(filem({"create", "FileGroup=a=b"}), (Outcome{0, "", ""}));
    EXPECT_EQ(tree.listing(), (Texts{"d a=b", "d new", "d new/a+b"}));
    EXPECT_EQ(tree.mode("new"), 0770U);
}

TEST_F(CommandsTest, CreateSaysWhyNot)
{
    tree.file("d/.filemnodirectorycreate");
    tree.file("f");
    const auto before = tree.listing();
    EXPECT_EQ(filem({"create", "FileGroup=d,FileGroup=new"}),
              (Outcome{1, "",
                       failure("create", root + ",FileGroup=d,FileGroup=new",
                               "FileGroup does not allow child FileGroup to be created")}));
    EXPECT_EQ(
        filem({"create", "FileGroup=a|b"}),
        (Outcome{1, "",
                 failure("create", root + ",FileGroup=a|b", "FileGroup contains illegal character(|)")}));
    EXPECT_EQ(
        filem({"create", "FileGroup=..."}),
        (Outcome{1, "", failure("create", root + ",FileGroup=...", "FileGroup name not allowed (...)")}));
    EXPECT_EQ(filem({"create", "FileGroup=f,FileGroup=new"}),
              (Outcome{1, "",
                       "filem: can't commit: a step failed; what was done before it stays, the rest is "
                       "forgotten\n"}));
    EXPECT_EQ(filem({"create", "FileGroup=d,FileInformation=f"}),
              (Outcome{2, "",
                       failure("create", root + ",FileGroup=d,FileInformation=f",
                               "a FileInformation can't be created")}));
    EXPECT_EQ(filem({"create", "FileGroup=.."}),
              (Outcome{2, "", failure("create", "FileGroup=..", "the value \"..\" would leave the tree")}));
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(CommandsTest, DeleteDeletesAFileOrADirectoryWithoutFiles)
{
    tree.file("d/f");
    tree.file("d/a=b");
    tree.directory("d/sub/sub");
    tree.directory("e=");
    EXPECT_EQ(filem({"delete", "FileGroup=d,FileInformation=f"}), (Outcome{0, "", ""}));
    EXPECT_EQ(filem({"delete", "FileGroup=d,FileInformation=a?\?b"}), (Outcome{0, "", ""}));
    EXPECT_EQ(tree.listing(), (Texts{"d d", "d d/sub", "d d/sub/sub", "d e="}));
    EXPECT_EQ(filem({"delete", "FileGroup=e?\?"}), (Outcome{0, "", ""}));
    EXPECT_EQ(filem({"delete", "FileGroup=d"}), (Outcome{0, "", ""}));
    EXPECT_EQ(tree.listing(), Texts{});
}

TEST_F(CommandsTest, DeleteSaysWhyNot)
{
    tree.file("d/f");
    tree.file("d/sub/g");
    tree.directory("d/a");
    tree.file("d/a=b");
    tree.file("kept/.filemnohousekeeping");
    tree.link("l", tree.path("d"));
    const auto before = tree.listing();
    const auto refused = [](const std::string& dn, const std::string& why) {
        return Outcome{1, "", failure("delete", root + "," + dn, why)};
    };
    EXPECT_EQ(filem({"delete", "FileGroup=kept"}),
              refused("FileGroup=kept", "FileGroup is not allowed to be deleted"));
    EXPECT_EQ(filem({"delete", "FileGroup=d"}),
              refused("FileGroup=d", "it is a symbolic link, or there are files in it or below"));
    EXPECT_EQ(filem({"delete", "FileGroup=l"}),
              refused("FileGroup=l", "it is a symbolic link, or there are files in it or below"));
    EXPECT_EQ(filem({"delete", "FileGroup=d,FileInformation=sub"}),
              refused("FileGroup=d,FileInformation=sub", "it is a directory"));
    EXPECT_EQ(filem({"delete", "FileGroup=d,FileInformation=a?\?b"}),
              refused("FileGroup=d,FileInformation=a?\?b",
                      "\"?\?\" may stand for a comma, which ends a value, and then " + root +
                          ",FileGroup=d,FileInformation=a is meant"));
    for (const std::string dn : {"FileGroup=x", "FileGroup=d,FileGroup=f", "FileGroup=d,FileInformation=x",
                                 "FileGroup=kept,FileInformation=.filemnohousekeeping"})
    {
        EXPECT_EQ(filem({"delete", dn}), missing("delete", dn));
    }
    EXPECT_EQ(filem({"delete", "FileInformation=f"}),
              (Outcome{2, "",
                       failure("delete", "FileInformation=f", "there is no FileInformation below a FileM")}));
    EXPECT_EQ(filem({"delete", root}),
              (Outcome{2, "", failure("delete", root, "the root of the tree can't be removed")}));
    EXPECT_EQ(
        filem({"delete", "FileMConfigData=1"}),
        (Outcome{2, "",
                 failure("delete", root + ",FileMConfigData=1", "a FileMConfigData can't be removed")}));
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(CommandsTest, RemoveRemovesADirectoryWithAllInIt)
{
    tree.file("d/sub/f");
    tree.file("d/.filemnodirectorydelete");
    tree.file("e/f");
    EXPECT_EQ(filem({"remove", "FileGroup=d"}), (Outcome{0, "true\n", ""}));
    EXPECT_EQ(filem({"remove", "FileGroup=e,FileInformation=f"}), (Outcome{0, "true\n", ""}));
    EXPECT_EQ(tree.listing(), Texts{"d e"});
}

TEST_F(CommandsTest, RemoveSaysWhyNot)
{
    tree.file("d/sub/f");
    tree.link("l", tree.path("d"));
    const auto before = tree.listing();
    EXPECT_EQ(filem({"remove", "FileGroup=l"}),
              (Outcome{1, "", failure("remove", root + ",FileGroup=l", "it is a symbolic link")}));
    EXPECT_EQ(
        filem({"remove", "FileGroup=d,FileInformation=sub"}),
        (Outcome{1, "", failure("remove", root + ",FileGroup=d,FileInformation=sub", "it is a directory")}));
    EXPECT_EQ(filem({"remove", "FileGroup=x"}), missing("remove", "FileGroup=x"));
    EXPECT_EQ(filem({"remove", root}),
              (Outcome{2, "", failure("remove", root, "the root of the tree can't be removed")}));
    EXPECT_EQ(filem({"remove", "FileInformation=f"}),
              (Outcome{2, "",
                       failure("remove", "FileInformation=f", "there is no FileInformation below a FileM")}));
    EXPECT_EQ(
        filem({"remove", "FileMConfigData=1"}),
        (Outcome{2, "",
                 failure("remove", root + ",FileMConfigData=1", "a FileMConfigData can't be removed")}));
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(CommandsTest, RemoveFileRemovesTheFilesWhoseWholeNameMatches)
{
    for (const std::string name : {"a.log", "b.log", "log", "b.log.1", "sub/c.log", "-x"})
    {
        tree.file("d/" + name);
    }
    EXPECT_EQ(filem({"remove-file", "FileGroup=d", ".*\\.log"}), (Outcome{0, "true\n", ""}));
    EXPECT_EQ(filem({"remove-file", "FileGroup=d", ".*\\.log"}), (Outcome{0, "false\n", ""}));
    EXPECT_EQ(filem({"remove-file", "FileGroup=d", "-x"}), (Outcome{0, "true\n", ""}));
    EXPECT_EQ(tree.listing(), (Texts{"d d", "d d/sub", "f d/b.log.1 1", "f d/log 1", "f d/sub/c.log 1"}));
}

TEST_F(CommandsTest, RemoveFileSaysWhyNot)
{
    tree.file("d/f");
    EXPECT_EQ(filem({"remove-file", "FileGroup=d", "("}),
              (Outcome{1, "", failure("remove-file", root + ",FileGroup=d", "Invalid regular expression")}));
    EXPECT_EQ(filem({"remove-file", "FileGroup=x", "f"}), missing("remove-file", "FileGroup=x"));
    EXPECT_EQ(filem({"remove-file", root, "f"}),
              (Outcome{2, "", failure("remove-file", root, "a FileM has no action removeFile")}));
    EXPECT_EQ(tree.listing(), (Texts{"d d", "f d/f 1"}));
}

TEST_F(CommandsTest, NamesNeverReachATerminalWithControlBytes)
{
    tree.file("d/\x1b[31mred\x9b");
    EXPECT_EQ(filem({"ls", "FileGroup=d"}), (Outcome{0, "FileInformation=\\x1b[31mred\\x9b\n", ""}));
    EXPECT_EQ(filem({"ls", "FileGroup=\x1b[2J"}), missing("ls", "FileGroup=\\x1b[2J"));
    EXPECT_EQ(filem({"\x1b[2J"}), (Outcome{2, "", "filem: there is no command \\x1b[2J, see help\n"}));
}
