#include "Filem.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

using testing::HasSubstr;

namespace
{

using Json = nlohmann::json;

class ReadingTest : public Filem
{
protected:
    /// The lines of a listing as JSON.
    std::vector<Json> json(const Texts& command) const
    {
        const Outcome outcome = filem(command);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        std::vector<Json> objects;
        std::istringstream lines(outcome.out);
        for (std::string line; std::getline(lines, line);)
        {
            objects.push_back(Json::parse(line));
        }
        return objects;
    }
};

} // namespace

TEST_F(ReadingTest, LsListsDirectoriesAndThenFiles)
{
    tree.file("d/b.log");
    tree.file("d/a=b");
    tree.file("d/.hidden");
    tree.file("d/.filemnohousekeeping");
    tree.file("d/z/f");
    tree.directory("B");
    tree.file("not below a directory");
    EXPECT_EQ(filem({"ls"}), (Outcome{0, "FileMConfigData=1\nB/\nd/\n", ""}));
    EXPECT_EQ(filem({"ls", "d"}), (Outcome{0, "z/\n.hidden\n'a?\?b'\nb.log\n", ""}));
    EXPECT_EQ(filem({"ls", root + ",FileGroup=d"}), filem({"ls", "d/"}));
    EXPECT_EQ(filem({"ls", "d/b.log", "d/a=b"}), (Outcome{0, "b.log\n'a?\?b'\n", ""}));
    EXPECT_EQ(filem({"ls", "d", "B"}), (Outcome{0, "d:\nz/\n.hidden\n'a?\?b'\nb.log\n\nB:\n", ""}));
    EXPECT_EQ(filem({"ls", "FileMConfigData=1"}), (Outcome{0, "FileMConfigData=1\n", ""}));
}

TEST_F(ReadingTest, LsEndsWithTheCodeForNoSuchObject)
{
    tree.file("d/.filemnohousekeeping");
    tree.file("d/f");
    tree.file("top");
    const std::string dn = root + ",FileGroup=d,FileInformation=";
    EXPECT_EQ(filem({"ls", "e/"}), missing("ls", "FileGroup=e"));
    EXPECT_EQ(filem({"ls", "d/x"}), missing("ls", "FileGroup=d,FileInformation=x"));
    EXPECT_EQ(filem({"ls", "d/f/"}), missing("ls", "FileGroup=d,FileGroup=f"));
    EXPECT_EQ(filem({"ls", "d/.filemnohousekeeping"}),
              (Outcome{4, "", failure("ls", dn + ".filemnohousekeeping", "no such object: it is a marker")}));
    EXPECT_EQ(filem({"ls", "top"}), (Outcome{4, "",
                                             failure("ls", root + ",FileInformation=top",
                                                     "no such object: files in the root are none")}));
}

TEST_F(ReadingTest, LsLongShowsATable)
{
    tree.file("d/a rather long name.log", "12345");
    tree.file("d/big", std::string(12345, 'x'));
    tree.file("d/=", "1");
    tree.file("d/sub/.filemnodirectorydelete");
    tree.link("d/link", tree.path("d/sub"));
    const std::string expected = "KIND  SIZE  CHANGED              MARKS  NAME\n"
                                 "dir      -  " +
                                 timeOf("d/sub") + "  @m     link/ -> " + tree.path("d/sub") +
                                 "\n"
                                 "dir      -  " +
                                 timeOf("d/sub") +
                                 "  m      sub/\n"
                                 "file     1  " +
                                 timeOf("d/=") +
                                 "         '?\?'  3d  =\n"
                                 "file     5  " +
                                 timeOf("d/a rather long name.log") +
                                 "         'a rather long name.log'\n"
                                 "file   13K  " +
                                 timeOf("d/big") + "         big\n";
    EXPECT_EQ(filem({"ls", "-l", "d"}), (Outcome{0, expected, ""}));
    EXPECT_THAT(filem({"ls", "-l"}).out,
                HasSubstr("config     -                              FileMConfigData=1\n"));
    EXPECT_EQ(filem({"ls", "-l", "d/big"}).out, "KIND  SIZE  CHANGED              MARKS  NAME\nfile   13K  " +
                                                    timeOf("d/big") + "         big\n");
}

TEST_F(ReadingTest, LsLongReadsOneByOneWhereALinkLeadsNowhereAndNamesIt)
{
    tree.file("d/f", "12345");
    tree.file("d/a,b", "123");
    tree.link("d/a link", "missing");
    const Outcome outcome = filem({"ls", "-l", "d"});
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.err,
              "filem: the component refuses the attribute files of " + root +
                  ",FileGroup=d: 'a link' is a link that leads nowhere; sizes and times are read "
                  "one by one\n");
    EXPECT_THAT(outcome.out, HasSubstr("file     5  " + timeOf("d/f")));
    EXPECT_THAT(outcome.out, HasSubstr("file     3  " + timeOf("d/a,b")));
}

TEST_F(ReadingTest, LsAllShowsWhatIsNoObjectAndWhy)
{
    tree.file("top");
    tree.file("d/f");
    tree.file("d/.filemnohousekeeping");
    tree.link("d/dangling", "missing");
    tree.link("d/to-file", tree.path("d/f"));
    EXPECT_EQ(filem({"ls", "-a", "d"}), (Outcome{0,
                                                 "f\n"
                                                 ". .filemnohousekeeping  (marker)\n"
                                                 ". dangling  (link to missing)\n"
                                                 ". to-file  (link to " +
                                                     tree.path("d/f") + ")\n",
                                                 ""}));
    EXPECT_EQ(filem({"ls", "-a"}),
              (Outcome{0, "FileMConfigData=1\nd/\n. top  (a file in the root is no object)\n", ""}));
}

TEST_F(ReadingTest, LsRecursiveGoesDownButThroughNoLink)
{
    tree.file("d/sub/f");
    tree.link("d/again", tree.path("d"));
    EXPECT_EQ(filem({"ls", "-R", "d"}), (Outcome{0, "d:\nagain/  @\nsub/\n\nd/sub:\nf\n", ""}));
}

TEST_F(ReadingTest, NothingIsReadInADirectoryThatTheComponentTakesForAnother)
{
    tree.file("a/f");
    tree.file("a,b/g");
    const std::string why =
        "no name reaches it: a comma in a name ends the value, and \"\\2B\" stands for a plus";
    const std::string note = "filem: a,b is left out: no name reaches it\n";
    EXPECT_EQ(filem({"ls", "a,b"}), (Outcome{1, "", failure("ls", root + ",FileGroup=a,b", why)}));
    EXPECT_EQ(filem({"find"}), (Outcome{0, "a/\na,b/\na/f\n", note}));
    EXPECT_EQ(filem({"tree"}),
              (Outcome{0, "/\n├── a/\n│   └── f\n└── 'a?\?b/'\n\n2 directories, 1 file\n", note}));
    EXPECT_EQ(filem({"ls", "-R"}), (Outcome{0, "/:\nFileMConfigData=1\na/\n'a?\?b/'\n\na:\nf\n", note}));
}

TEST_F(ReadingTest, LsNullEndsNamesAsTheyAreOnDisk)
{
    tree.file("d/two\nlines");
    tree.file("d/a=b");
    EXPECT_EQ(filem({"ls", "-0", "d"}), (Outcome{0, std::string("a=b\0two\nlines\0", 14), ""}));
    EXPECT_EQ(filem({"ls", "-0"}), (Outcome{0, std::string("d\0", 2), ""}))
        << "the configuration has no name";
    EXPECT_EQ(filem({"ls", "-R", "-0"}), (Outcome{0, std::string("d\0d/a=b\0d/two\nlines\0", 20), ""}));
    EXPECT_EQ(filem({"ls", "-0", "-l"}), (Outcome{2, "", "filem: ls: -0 goes with neither -l nor --json\n"}));
}

TEST_F(ReadingTest, NamesNeverReachATerminalRawAndAreTakenAsTheyAreShown)
{
    tree.file("d/\x1b[31mred\x9b");
    const std::string shown = "$'\\x1b[31mred\\x9b'";
    EXPECT_EQ(filem({"ls", "d"}), (Outcome{0, shown + "\n", ""}));
    EXPECT_EQ(script("ls d/" + shown + "\n"), (Outcome{0, shown + "\n", ""}));
    EXPECT_EQ(zoltest::runProcess({"/bin/bash", "-c",
                                   std::string("ZOL_LOG_LEVEL=0 ") + FILEM_PROGRAM + " --root " +
                                       tree.path() + " ls d/" + shown}),
              (Outcome{0, shown + "\n", ""}));
    const std::string dn = "$'" + root + ",FileGroup=\\x1b[2J'";
    EXPECT_EQ(filem({"ls", "\x1b[2J/"}), (Outcome{4, "", failure("ls", dn, "no such object")}));
    EXPECT_EQ(script("ls " + dn + "\n").err, "filem: line 1: can't ls, on " + dn + ": no such object\n");
    EXPECT_EQ(filem({"\x1b[2J"}),
              (Outcome{2, "", "filem: there is no command \\x1b[2J, see filem --help\n"}));
}

TEST_F(ReadingTest, JsonHoldsAllThreeFormsOfANameExactly)
{
    tree.file("d/a=\xff", "123");
    tree.directory("d/x+y");
    const auto objects = json({"ls", "-l", "--json", "d"});
    ASSERT_EQ(objects.size(), 2U);
    EXPECT_EQ(objects[0]["class"], "FileGroup");
    EXPECT_EQ(objects[0]["value"], "x\\2By");
    EXPECT_EQ(objects[0]["name"], "x+y");
    EXPECT_EQ(objects[0]["quoted"], "d/x+y");
    EXPECT_EQ(objects[0]["dn"], root + ",FileGroup=d,FileGroup=x\\2By");
    EXPECT_EQ(objects[1]["value"], nullptr);
    EXPECT_EQ(objects[1]["valueHex"], "613f3fff");
    EXPECT_EQ(objects[1]["nameHex"], "613dff");
    EXPECT_EQ(objects[1]["quoted"], "$'d/a=\\xff'");
    EXPECT_EQ(objects[1]["size"], 3);
    EXPECT_EQ(objects[1]["changed"], timeOf("d/a=\xff"));
}

TEST_F(ReadingTest, EveryReadingCommandHasJson)
{
    tree.file("d/f", "123");
    EXPECT_EQ(json({"tree", "--json"}).size(), 2U);
    EXPECT_EQ(json({"find", "--json"}).size(), 2U);
    EXPECT_EQ(json({"exists", "--json", "d"})[0], Json({{"exists", true}}));
    EXPECT_EQ(json({"count", "--json", "d"})[0], Json({{"FileGroup", 0}, {"FileInformation", 1}}));
    EXPECT_EQ(json({"get", "--json", "d/f", "size", "open"})[0], Json({{"size", 3}, {"open", false}}));
    const auto stat = json({"stat", "--json", "d/f"})[0];
    EXPECT_EQ(stat["attributes"]["modificationTime"], timeOf("d/f"));
    EXPECT_EQ(stat["attributes"]["size"], 3);
    EXPECT_EQ(json({"stat", "--json", "d"})[0]["attributes"]["files"][0]["fileName"], "f");
}

TEST_F(ReadingTest, TreeDrawsWhatIsBelow)
{
    tree.file("d/sub/deep/f");
    tree.file("d/sub/g");
    tree.file("d/h");
    EXPECT_EQ(filem({"tree", "d"}), (Outcome{0,
                                             "d/\n"
                                             "├── sub/\n"
                                             "│   ├── deep/\n"
                                             "│   │   └── f\n"
                                             "│   └── g\n"
                                             "└── h\n"
                                             "\n2 directories, 3 files\n",
                                             ""}));
    EXPECT_EQ(filem({"tree", "-L", "1"}), (Outcome{0, "/\n└── d/\n\n1 directory, 0 files\n", ""}));
    EXPECT_EQ(filem({"tree", "e"}), missing("tree", "FileGroup=e"));
}

TEST_F(ReadingTest, FindFindsByNameKindAndSize)
{
    tree.file("d/a.log", "12345");
    tree.file("d/b.txt", std::string(2000, 'x'));
    tree.file("d/logs/c.log");
    EXPECT_EQ(filem({"find"}), (Outcome{0, "d/\nd/logs/\nd/a.log\nd/b.txt\nd/logs/c.log\n", ""}));
    EXPECT_EQ(filem({"find", "--name", "*.log"}), (Outcome{0, "d/a.log\nd/logs/c.log\n", ""}));
    EXPECT_EQ(filem({"find", "--matching", "[ab]..*", "d"}), (Outcome{0, "d/a.log\nd/b.txt\n", ""}));
    EXPECT_EQ(filem({"find", "--type", "d"}), (Outcome{0, "d/\nd/logs/\n", ""}));
    EXPECT_EQ(filem({"find", "--larger", "1K"}), (Outcome{0, "d/b.txt\n", ""}));
    EXPECT_EQ(filem({"find", "-0", "--type", "f", "d/logs"}),
              (Outcome{0, std::string("d/logs/c.log\0", 13), ""}));
    EXPECT_EQ(filem({"find", "--matching", "("}),
              (Outcome{2, "", "filem: find: the regular expression is not valid\n"}));
}

TEST_F(ReadingTest, StatShowsNamesAndEveryAttributeAndShowIsTheSame)
{
    tree.file("d/a=b.gz", "12345");
    tree.chmod("d/a=b.gz", 0640);
    const std::string dn = root + ",FileGroup=d,FileInformation=a=b.gz";
    const Outcome expected = {0,
                              "dn: " + dn +
                                  "\n"
                                  "name: 'a?\?b.gz'  613d622e677a  a=b.gz\n"
                                  "mode: -rw-r-----\n"
                                  "fileInformationId: a?\?b.gz\n"
                                  "modificationTime: " +
                                  timeOf("d/a=b.gz") +
                                  "\n"
                                  "size: 5\n"
                                  "type: gz\n"
                                  "open: false\n",
                              ""};
    EXPECT_EQ(filem({"stat", "d/a?\?b.gz"}), expected);
    EXPECT_EQ(filem({"show", "d/a=b.gz"}), expected);
    EXPECT_EQ(filem({"stat", "/"}), (Outcome{0, "dn: " + root + "\n", ""}));
}

TEST_F(ReadingTest, StatShowsWhatCanBeReadAndSaysWhatCanNot)
{
    tree.link("d/nowhere", "missing");
    tree.chmod("d", 0750);
    EXPECT_EQ(filem({"stat", "d"}),
              (Outcome{1,
                       "dn: " + root +
                           ",FileGroup=d\nname: d/\nmode: drwxr-x---\nfileGroupId: d\ninternalHousekeeping: "
                           "false\nreservedByPolicy:\n",
                       failure("stat", root + ",FileGroup=d",
                               "files: the directory can't be read, or a link in it leads nowhere")}));
}

TEST_F(ReadingTest, StatTellsThatALinkLeadsToAPlace)
{
    const zoltest::TemporaryTree other;
    other.file("sub/f");
    tree.directory("inside");
    tree.link("out", other.path());
    tree.link("in", tree.path("inside"));
    EXPECT_THAT(filem({"stat", "out/sub/f"}).out, HasSubstr("\nlink: out leads out of the tree\n"));
    EXPECT_THAT(filem({"stat", "in"}).out, HasSubstr("\nlink: in leads here\n"));
}

TEST_F(ReadingTest, GetShowsSingleAttributes)
{
    tree.file("d/f", "123");
    EXPECT_EQ(filem({"get", "FileGroup=d,FileInformation=f", "size", "type"}),
              (Outcome{0, "size: 3\ntype:\n", ""}));
    EXPECT_EQ(filem({"get", "d", "size"}),
              (Outcome{2, "", failure("get", root + ",FileGroup=d", "a FileGroup has no attribute size")}));
    EXPECT_EQ(filem({"get", "d/g", "size"}), missing("get", "FileGroup=d,FileInformation=g"));
}

TEST_F(ReadingTest, ExistsPrintsItsAnswerAndExitsWithIt)
{
    tree.file("d/f");
    const Outcome yes = {0, "true\n", ""};
    const Outcome no = {4, "false\n", ""};
    EXPECT_EQ(filem({"exists", root}), yes);
    EXPECT_EQ(filem({"exists", "FileMConfigData=1"}), yes);
    EXPECT_EQ(filem({"exists", "d"}), yes);
    EXPECT_EQ(filem({"exists", "d/f"}), yes);
    EXPECT_EQ(filem({"exists", "e"}), no);
    EXPECT_EQ(filem({"exists", "FileGroup=d,FileGroup=f"}), no);
}

TEST_F(ReadingTest, CountCountsTheChildren)
{
    tree.file("d/f");
    tree.file("d/g");
    tree.directory("d/sub");
    EXPECT_EQ(filem({"count"}), (Outcome{0, "FileGroup: 1\n", ""}));
    EXPECT_EQ(filem({"count", "d"}), (Outcome{0, "FileGroup: 1\nFileInformation: 2\n", ""}));
    EXPECT_EQ(filem({"count", "d", "FileInformation"}), (Outcome{0, "2\n", ""}));
    EXPECT_EQ(filem({"count", "e"}), missing("count", "FileGroup=e"));
    EXPECT_EQ(filem({"count", "/", "FileInformation"}),
              (Outcome{2, "", failure("count", root, "there is no FileInformation below a FileM")}));
}

TEST_F(ReadingTest, WarnsOfWhatIsStagedToGo)
{
    tree.file("d/sub/f");
    EXPECT_EQ(script("rmtree d\nls d/sub\nabort\n"),
              (Outcome{0, "f\n", "filem: d is staged to be removed\n"}));
}

TEST_F(ReadingTest, EndsWithoutAWordWhenNobodyReadsAnyMore)
{
    for (int i = 0; i < 5000; ++i)
    {
        tree.file("d/" + std::to_string(i), "");
    }
    const Outcome outcome = zoltest::runProcess(
        {"/bin/bash", "-c",
         std::string(FILEM_PROGRAM) + " --root " + tree.path() + " find d | head -1 >/dev/null"});
    EXPECT_EQ(outcome, (Outcome{0, "", ""}));
}

TEST_F(ReadingTest, GivesTheSameBytesPipedAsPlain)
{
    tree.file("d/sub/f");
    for (const Texts& command : {Texts{"ls", "-l", "d"}, Texts{"tree"}})
    {
        Texts plain = {"--plain", "--root", tree.path()};
        plain.insert(plain.end(), command.begin(), command.end());
        EXPECT_EQ(run(plain), filem(command));
    }
}
