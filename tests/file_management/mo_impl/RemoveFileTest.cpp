#include "ChangesFixture.h"
#include "support/WorkingDirectory.h"

#include <Poco/DirectoryIterator.h>

using testing::ElementsAre;
using testing::IsEmpty;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::RecordedLog;
using zoltest::Texts;

namespace
{

const std::string d = fileGroup("d");
const std::string yes = "0 bool[true]";
const std::string no = "0 bool[false]";

class RemoveFile : public zoltest::Changes
{
protected:
    /// The files left in directory d after the expression and a commit.
    Texts leftBy(const std::string& expression, const Texts& names)
    {
        for (const std::string& name : names)
        {
            tree.file("d/" + name);
        }
        EXPECT_EQ(removeFile(d, expression), yes);
        EXPECT_EQ(worker.commit(), 0);
        Texts left;
        for (const std::string& name : names)
        {
            if (tree.exists("d/" + name))
            {
                left.push_back(name);
            }
        }
        return left;
    }
};

Texts statementsOfAWalk(const std::string& expression)
{
    return {"enter  >> Removing files matching expression ^" + expression + "$", "exit  << "};
}

} // namespace

TEST_F(RemoveFile, DeletesTheMatchingFilesAtCommit)
{
    tree.file("d/a.log");
    tree.file("d/b.log");
    tree.file("d/c.txt");
    const RecordedLog log;
    EXPECT_EQ(removeFile(d, ".*\\.log"), yes);
    EXPECT_EQ(log.statements(), statementsOfAWalk(".*\\.log"));
    EXPECT_TRUE(tree.exists("d/a.log"));
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "f d/c.txt 1"));
    EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(RemoveFile, MakesRoomForNewDirectoriesOfTheSameNames)
{
    tree.file("d/f");
    EXPECT_EQ(removeFile(d, "f"), yes);
    ASSERT_EQ(create("f", d), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d d/f"));
}

TEST_F(RemoveFile, MatchesTheWholeName)
{
    EXPECT_THAT(leftBy("log", {"log", "log1", "alog", "alog1", "LOG"}),
                ElementsAre("log1", "alog", "alog1", "LOG"));
}

TEST_F(RemoveFile, TakesExtendedExpressions)
{
    EXPECT_THAT(leftBy("(ab)+[0-9]{2}x?", {"ab12", "abab12x", "ab1", "ab12xx", "(ab)+12"}),
                ElementsAre("ab1", "ab12xx", "(ab)+12"));
}

TEST_F(RemoveFile, AnchorsOnlyTheEndsOfAnAlternative)
{
    EXPECT_THAT(leftBy("a|b", {"ax", "xb", "xa", "bx"}), ElementsAre("xa", "bx"));
}

TEST_F(RemoveFile, LooksAtTheNameAlone)
{
    tree.file("d/f");
    EXPECT_EQ(removeFile(d, ".*d/f"), no);
    EXPECT_EQ(removeFile(d, ".*/.*"), no);
}

TEST_F(RemoveFile, WithoutAMatchIsASuccessThatChangesNothing)
{
    tree.file("d/f");
    const RecordedLog log;
    EXPECT_EQ(removeFile(d, "g"), no);
    EXPECT_EQ(log.statements(), statementsOfAWalk("g"));
    expectNothingWaits();
}

TEST_F(RemoveFile, InAMissingOrNewDirectoryFindsNothing)
{
    ASSERT_EQ(create("new"), 0);
    EXPECT_EQ(removeFile(fileGroup("missing"), ".*"), no);
    EXPECT_EQ(removeFile(fileGroup("new"), ".*"), no);
}

TEST_F(RemoveFile, LeavesSubdirectoriesAndWhatIsInThem)
{
    tree.file("d/sub/f");
    tree.file("d/f");
    EXPECT_EQ(removeFile(d, ".*"), yes);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d d/sub", "f d/sub/f 1"));
}

TEST_F(RemoveFile, OnlySubdirectoriesAreNoMatch)
{
    tree.directory("d/f");
    EXPECT_EQ(removeFile(d, "f"), no);
    expectNothingWaits();
}

TEST_F(RemoveFile, SkipsLinks)
{
    tree.file("target");
    tree.directory("d");
    tree.directory("other");
    tree.link("d/toFile", tree.path("target"));
    tree.link("d/toDirectory", tree.path("other"));
    const RecordedLog log;
    EXPECT_EQ(removeFile(d, "to.*"), no);
    EXPECT_EQ(log.statements(), statementsOfAWalk("to.*"));
    tree.file("d/to");
    EXPECT_EQ(removeFile(d, "to.*"), yes);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_TRUE(tree.exists("d/toFile"));
    EXPECT_TRUE(tree.exists("d/toDirectory"));
    EXPECT_TRUE(tree.exists("target"));
    EXPECT_FALSE(tree.exists("d/to"));
}

TEST_F(RemoveFile, SkipsALinkThatAWalkTakesForAFile)
{
    tree.file("d/target");
    tree.link("d/link", "target");
    tree.directory("elsewhere/target");
    const zoltest::WorkingDirectory elsewhere(tree.path("elsewhere"));
    EXPECT_EQ(removeFile(d, "link"), no);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_TRUE(tree.exists("d/link"));
}

TEST_F(RemoveFile, SkipsHiddenFiles)
{
    const Texts markers = {".filemnodirectorycreate", ".filemnodirectorydelete", ".filemnohousekeeping"};
    for (const std::string& marker : markers)
    {
        tree.file("d/" + marker);
    }
    EXPECT_EQ(removeFile(d, ".*"), no);
    tree.file("d/.filemnohousekeeping2");
    EXPECT_EQ(removeFile(d, ".*"), yes);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "f d/.filemnodirectorycreate 1",
                                            "f d/.filemnodirectorydelete 1", "f d/.filemnohousekeeping 1"));
}

TEST_F(RemoveFile, NeedsNoPermissionOfTheMarkers)
{
    tree.file("d/.filemnodirectorydelete");
    tree.file("d/f");
    EXPECT_EQ(removeFile(d, "f"), yes);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_FALSE(tree.exists("d/f"));
}

TEST_F(RemoveFile, SkipsFilesDeletedBefore)
{
    tree.file("d/f");
    tree.file("d/g");
    tree.file("d/h");
    ASSERT_EQ(deleteM(fileInformation("f", d)), 0);
    ASSERT_EQ(remove(fileInformation("g", d)), yes);
    EXPECT_EQ(removeFile(d, "[fg]"), no);
    EXPECT_EQ(removeFile(d, "h"), yes);
    EXPECT_EQ(removeFile(d, "h"), no);
}

TEST_F(RemoveFile, WorksOnTheDirectoryOfAnyDn)
{
    tree.file("f");
    tree.file("g");
    tree.file("h+/i");
    EXPECT_EQ(removeFile(fileM, "f"), yes);
    EXPECT_EQ(removeFile(zoltest::fileMConfigData, "g"), yes);
    EXPECT_EQ(removeFile(fileGroup("h\\2B"), "i"), yes);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d h+"));
}

TEST_F(RemoveFile, DoesNotSearchForTheDirectory)
{
    tree.file("a=b/f");
    EXPECT_EQ(removeFile(fileGroup("a?\?b"), "f"), no);
}

TEST_F(RemoveFile, AWalkThatFailsIsASuccessWithoutAMatch)
{
    const std::string file = tree.file("d/f");
    std::string reason;
    try
    {
        const Poco::DirectoryIterator iterator(file);
    }
    catch (const std::exception& failure)
    {
        reason = failure.what();
    }
    const RecordedLog log;
    EXPECT_EQ(removeFile(fileInformation("f", d), "f"), no);
    EXPECT_THAT(log.statements(), ElementsAre("enter  >> Removing files matching expression ^f$",
                                              "plain Unexpected exception :" + reason, "exit  << "));
    expectNothingWaits();
}

TEST_F(RemoveFile, WithAnInvalidExpressionFailsWithTheReason)
{
    tree.file("d/f");
    const RecordedLog log;
    EXPECT_THAT(removeFile(d, "(f"), testing::StartsWith("-1 bool["));
    EXPECT_THAT(host.messages(), ElementsAre("Invalid regular expression"));
    EXPECT_THAT(log.statements(), ElementsAre("enter  >> Removing files matching expression ^(f$",
                                              "plain Failed to compile file name pattern (^(f$)"));
    expectNothingWaits();
}

TEST_F(RemoveFile, AnInvalidExpressionLeavesTheAnswerUnwritten)
{
    const Poco::Path directory(directoryText("d"));
    bool removed = true;
    EXPECT_EQ(worker.removeFileAction(directory, "^[$", removed), -1);
    EXPECT_TRUE(removed);
    removed = false;
    EXPECT_EQ(worker.removeFileAction(directory, "^[$", removed), -1);
    EXPECT_FALSE(removed);
}

TEST_F(RemoveFile, AWalkWithoutAMatchWritesTheAnswer)
{
    bool removed = true;
    EXPECT_EQ(worker.removeFileAction(Poco::Path(directoryText("d")), "^f$", removed), 0);
    EXPECT_FALSE(removed);
}

TEST_F(RemoveFile, TheWalkItselfTakesTheExpressionAsItIs)
{
    tree.file("d/xfx");
    bool removed = false;
    EXPECT_EQ(worker.removeFileAction(Poco::Path(directoryText("d")), "f", removed), 0);
    EXPECT_TRUE(removed);
}
