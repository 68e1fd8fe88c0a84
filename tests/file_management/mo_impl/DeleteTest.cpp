#include "ChangesFixture.h"
#include "SystemFaults.h"

#include <filesystem>

using testing::ElementsAre;
using testing::IsEmpty;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::RecordedLog;
using zoltest::SystemFaults;
using zoltest::Texts;

namespace
{

class Delete : public zoltest::Changes
{
protected:
    /// What deleteM says of something that isn't on disk.
    std::string notThere(const std::string& name) const
    {
        return "plain Warning: could not stat " + tree.path(name) + ", reason :2";
    }

    /// The commit that follows creates no directory.
    void expectNothingIsCreated()
    {
        SystemFaults system;
        system.createDirectory = [](const std::string& path) { ADD_FAILURE() << "created " << path; };
        EXPECT_EQ(worker.commit(), 0);
    }
};

} // namespace

TEST_F(Delete, OfAnEmptyDirectoryRemovesItAtCommit)
{
    tree.directory("a");
    const RecordedLog log;
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_THAT(log.statements(), IsEmpty());
    EXPECT_TRUE(tree.exists("a"));
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
    EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(Delete, OfAFileRemovesItAtCommit)
{
    tree.file("d/f");
    tree.file("d/g");
    const RecordedLog log;
    EXPECT_EQ(deleteM(fileInformation("f", fileGroup("d"))), 0);
    EXPECT_THAT(log.statements(), IsEmpty());
    EXPECT_TRUE(tree.exists("d/f"));
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "f d/g 1"));
}

TEST_F(Delete, OfADirectoryNamedLikeAHomeDirectoryOrADeviceRemovesThatOne)
{
    for (const char* name : {"~", "~root", "a:"})
    {
        tree.directory(name);
        EXPECT_EQ(deleteM(fileGroup(name)), 0);
    }
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Delete, OfASymbolicLinkIsRefusedSilently)
{
    tree.directory("d");
    tree.file("d/f");
    tree.link("toDirectory", tree.path("d"));
    tree.link("d/toFile", tree.path("d/f"));
    tree.link("d/toNothing", tree.path("nothing"));
    const std::string dns[] = {
        fileGroup("toDirectory"),
        fileInformation("toFile", fileGroup("d")),
        fileInformation("toNothing", fileGroup("d")),
        fileGroup("toNothing", fileGroup("d")),
    };
    for (const std::string& dn : dns)
    {
        SCOPED_TRACE(dn);
        const RecordedLog log;
        EXPECT_EQ(deleteM(dn), -1);
        EXPECT_THAT(log.statements(), IsEmpty());
    }
    EXPECT_THAT(host.messages(), IsEmpty());
    expectNothingWaits();
}

TEST_F(Delete, OfWhatIsNotThereFindsNothingWhateverItsClass)
{
    tree.directory("d");
    const struct
    {
        std::string dn;
        std::string path;
    } cases[] = {
        {fileGroup("gone"), tree.path("gone")},
        {fileGroup("gone", fileGroup("d")), tree.path("d/gone")},
        {fileInformation("gone", fileGroup("d")), tree.path("d/gone")},
        {fileGroup("zol-test-gone") + ",Other=x",
         "/zol-test-gone/x"}, // a class that has no place below the root
    };
    for (const auto& [dn, path] : cases)
    {
        SCOPED_TRACE(dn);
        const RecordedLog log;
        EXPECT_EQ(deleteM(dn), -2);
        EXPECT_THAT(log.statements(), ElementsAre("plain Warning: could not stat " + path + ", reason :2"));
    }
    EXPECT_THAT(host.messages(), IsEmpty());
    expectNothingWaits();
}

TEST_F(Delete, OfAFileFindsNothingWhereOnlyANewDirectoryHasItsName)
{
    ASSERT_EQ(create("d"), 0);
    ASSERT_EQ(create("f", fileGroup("d")), 0);
    EXPECT_EQ(deleteM(fileInformation("f", fileGroup("d"))), -2);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d d/f"));
}

TEST_F(Delete, OfADirectoryWithAnyMarkerIsRefusedWithTheReason)
{
    for (const char* marker : {".filemnodirectorydelete", ".filemnodirectorycreate", ".filemnohousekeeping"})
    {
        SCOPED_TRACE(marker);
        tree.file(std::string("a/") + marker);
        host.clear();
        const RecordedLog log;
        EXPECT_EQ(deleteM(fileGroup("a")), -1);
        EXPECT_THAT(log.statements(), IsEmpty());
        EXPECT_THAT(host.messages(), ElementsAre("FileGroup is not allowed to be deleted"));
        expectNothingWaits();
        std::filesystem::remove(tree.path("a") + "/" + marker);
    }
}

TEST_F(Delete, LooksAtTheMarkersBeforeTheFiles)
{
    tree.file("a/.filemnodirectorydelete");
    tree.file("a/f");
    EXPECT_EQ(deleteM(fileGroup("a")), -1);
    EXPECT_THAT(host.messages(), ElementsAre("FileGroup is not allowed to be deleted"));
}

TEST_F(Delete, MarkersAboveAndBelowDoNotCount)
{
    tree.file(".filemnodirectorydelete");
    tree.file("a/b/.filemnodirectorydelete");
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_THAT(host.messages(), IsEmpty());
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_FALSE(tree.exists("a"));
}

TEST_F(Delete, OfADirectoryWithAFileAtAnyDepthIsRefusedSilently)
{
    tree.file("a/f");
    tree.file("b/c/d/f");
    tree.file("target/f");
    tree.directory("c");
    tree.link("c/link", tree.path("target"));
    for (const char* name : {"a", "b", "c"})
    {
        SCOPED_TRACE(name);
        const RecordedLog log;
        EXPECT_EQ(deleteM(fileGroup(name)), -1);
        EXPECT_THAT(log.statements(), IsEmpty());
    }
    EXPECT_THAT(host.messages(), IsEmpty());
    expectNothingWaits();
}

TEST_F(Delete, OfADirectoryWithSubdirectoriesButNoFilesRemovesThemAll)
{
    tree.directory("a/b/c");
    tree.directory("a/d");
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Delete, FilesDeletedBeforeDoNotCount)
{
    tree.file("a/f");
    tree.file("a/g");
    tree.file("a/b/h");
    const std::string a = fileGroup("a");
    EXPECT_EQ(deleteM(a), -1);
    ASSERT_EQ(deleteM(fileInformation("f", a)), 0);
    ASSERT_EQ(removeFile(a, "g"), "0 bool[true]");
    EXPECT_EQ(deleteM(a), -1);
    ASSERT_EQ(deleteM(fileInformation("h", fileGroup("b", a))), 0);
    EXPECT_EQ(deleteM(a), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Delete, LinksToFilesDoNotCount)
{
    tree.file("f");
    tree.directory("a");
    tree.link("a/link", tree.path("f"));
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("f f 1"));
}

TEST_F(Delete, TwiceOfADirectoryIsOneEntry)
{
    tree.directory("a");
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    ASSERT_EQ(create("a"), 0);
    expectNothingWaits();
}

TEST_F(Delete, OfANewDirectoryLeavesNothingWaiting)
{
    EXPECT_EQ(create("a"), 0);
    const RecordedLog log;
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_THAT(log.statements(), ElementsAre(notThere("a")));
    tree.directory("a");
    tree.chmod("a", 0700);
    expectNothingWaits();
    EXPECT_EQ(tree.mode("a"), 0700U);
}

TEST_F(Delete, OfANewDirectoryTwiceFindsNothingTheSecondTime)
{
    ASSERT_EQ(create("a"), 0);
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_EQ(deleteM(fileGroup("a")), -2);
}

TEST_F(Delete, OfANewDirectoryWithdrawsTheNewOnesBelowItAtAnyDepth)
{
    for (const char* name : {"a", "a-b", "ab"})
    {
        ASSERT_EQ(create(name), 0);
    }
    const std::string a = fileGroup("a");
    ASSERT_EQ(create("y", fileGroup("x", a)), 0);
    ASSERT_EQ(create("x", a), 0);
    ASSERT_EQ(create("x-y", a), 0);
    ASSERT_EQ(create("x", fileGroup("ab")), 0);

    const RecordedLog log;
    EXPECT_EQ(deleteM(a), 0);
    EXPECT_THAT(log.statements(),
                ElementsAre(notThere("a"), "plain Child directory " + directoryText("a/x-y"),
                            "plain Child directory " + directoryText("a/x"),
                            "plain Child directory " + directoryText("a/x/y")));
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a-b", "d ab", "d ab/x"));
}

TEST_F(Delete, OfADirectoryOnDiskWithdrawsTheNewOnesBelowIt)
{
    tree.directory("a/old");
    ASSERT_EQ(create("x", fileGroup("a")), 0);
    ASSERT_EQ(create("y", fileGroup("old", fileGroup("a"))), 0);
    const RecordedLog log;
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_THAT(log.statements(), ElementsAre("plain Child directory " + directoryText("a/old/y"),
                                              "plain Child directory " + directoryText("a/x")));
    expectNothingIsCreated();
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Delete, TheNewDirectoriesBelowAreNotThemselvesDeleted)
{
    tree.directory("a");
    ASSERT_EQ(create("x", fileGroup("a")), 0);
    ASSERT_EQ(deleteM(fileGroup("a")), 0);
    Texts removed;
    SystemFaults system;
    system.remove = [&](const std::string& path) { removed.push_back(path); };
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(removed, ElementsAre(tree.path("a")));
}

TEST_F(Delete, ANewDirectoryElsewhereStays)
{
    tree.directory("a");
    ASSERT_EQ(create("b"), 0);
    const RecordedLog log;
    EXPECT_EQ(deleteM(fileGroup("a")), 0);
    EXPECT_THAT(log.statements(), IsEmpty());
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d b"));
}

TEST_F(Delete, OfARefusedDirectoryWithdrawsNothing)
{
    tree.file("a/f");
    ASSERT_EQ(create("x", fileGroup("a")), 0);
    EXPECT_EQ(deleteM(fileGroup("a")), -1);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a", "d a/x", "f a/f 1"));
}

TEST_F(Delete, OfAnyOtherClassIsRefusedInTheLog)
{
    const struct
    {
        std::string dn;
        const char* className;
    } cases[] = {
        {fileM, "FileM"},
        {zoltest::fileMConfigData, "FileMConfigData"},
        {fileM + ",FileGroupPolicy=d", "FileGroupPolicy"},
    };
    tree.directory("d");
    for (const auto& [dn, className] : cases)
    {
        SCOPED_TRACE(dn);
        const RecordedLog log;
        EXPECT_EQ(deleteM(dn), -1);
        EXPECT_THAT(log.statements(),
                    ElementsAre(std::string("severity-3 No such MO class handled :") + className));
    }
    EXPECT_THAT(host.messages(), IsEmpty());
    expectNothingWaits();
}

TEST_F(Delete, TakesThePathFromTheDnThatTheSearchFinds)
{
    tree.directory("a=b");
    tree.file("d/x;y");
    tree.file("d/z");
    EXPECT_EQ(deleteM(fileGroup("a?\?b")), 0);
    EXPECT_EQ(deleteM(fileInformation("x?\?y", fileGroup("d"))), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "f d/z 1"));
}

TEST_F(Delete, TakesThePathFromTheDnItselfWhereTheSearchFindsNothing)
{
    tree.directory("a?\?b");
    EXPECT_EQ(deleteM(fileGroup("a?\?b")), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(Delete, ALinkThatTheSearchFindsIsRefused)
{
    tree.directory("d");
    tree.link("a=b", tree.path("d"));
    EXPECT_EQ(deleteM(fileGroup("a?\?b")), -1);
    expectNothingWaits();
}

// The comma is among what a pair of question marks may stand for, so that the DN which the search finds can
// end in another class.
TEST_F(Delete, TakesTheClassFromTheDnAsItCame)
{
    tree.file("d/x/f");
    const RecordedLog log;
    EXPECT_EQ(deleteM(fileGroup("d") + ",Other=x?\?FileInformation=f"), -1);
    EXPECT_THAT(log.statements(), ElementsAre("severity-3 No such MO class handled :Other"));
    expectNothingWaits();
}

TEST_F(Delete, AsAFileRemovesWhateverDirectoryTheSearchFinds)
{
    tree.file("d/f/x/inner");
    EXPECT_EQ(deleteM(fileInformation("f?\?FileGroup=x", fileGroup("d"))), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d d/f"));
}
