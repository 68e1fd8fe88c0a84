#include "Faults.h"
#include "ProcessState.h"
#include "WalkFixture.h"

#include <Poco/DirectoryIterator.h>
#include <Poco/Exception.h>
#include <cerrno>
#include <filesystem>

using namespace testing;

namespace zoltest
{

namespace
{

using FailingWalk = Walk;

TEST_F(FailingWalk, OfAMissingDirectoryYieldsNothingAndWritesNothing)
{
    const RecordedLog log;

    EXPECT_THAT(filesIn("missing"), IsEmpty());
    EXPECT_THAT(directoriesIn("missing"), IsEmpty());
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(FailingWalk, OfARegularFileYieldsNothingNotEvenNewDirectories)
{
    tree.file("f");
    changes.addCreatedDir(directory("f/new"));
    const RecordedLog log;

    EXPECT_THAT(directoriesIn("f"), IsEmpty());
    EXPECT_THAT(filesIn("f"), IsEmpty());
    EXPECT_THAT(log.statements(), ElementsAre("plain Unexpected exception :Cannot open file",
                                              "plain Unexpected exception :Cannot open file"));
}

TEST_F(FailingWalk, OfAnUnreadableDirectoryYieldsNothingNotEvenNewDirectories)
{
    tree.directory("closed");
    tree.chmod("closed", 0);
    changes.addCreatedDir(directory("closed/new"));

    const std::string told = asOrdinaryUser(tree, [&] {
        const RecordedLog log;
        const Texts yielded = directoriesIn("closed");
        return PrintToString(yielded) + " " + PrintToString(log.statements());
    });

    EXPECT_EQ(told, "{} { \"plain Unexpected exception :Access to file denied\" }");
}

TEST_F(FailingWalk, EndsAtAnEntryThatHasVanishedWithoutWhatWouldFollow)
{
    tree.file("f");
    changes.addCreatedDir(directory("new"));
    Iterator iterator = open("", directories);
    std::filesystem::remove(tree.path("f"));
    const RecordedLog log;

    EXPECT_EQ(step(iterator), "end");
    EXPECT_EQ(step(iterator), "end");
    EXPECT_THAT(log.statements(),
                ElementsAre("plain Warning: could not stat " + tree.path("f") + ", reason :2",
                            "plain Unexpected exception :File not found"));
}

TEST_F(FailingWalk, StaysAtItsEndWhateverTheDirectoryStillHolds)
{
    for (int i = 0; i < 10; ++i)
    {
        tree.file("f" + std::to_string(i));
    }
    Faults faults;
    faults.lstat = [](const std::string& path) {
        std::filesystem::remove(path);
        return 0;
    };
    const RecordedLog log;
    Iterator iterator = open("", files);

    EXPECT_EQ(step(iterator), "end");
    EXPECT_EQ(step(iterator), "end");
    EXPECT_EQ(step(iterator), "end");
    EXPECT_THAT(log.statements(), SizeIs(2));
}

TEST_F(FailingWalk, EndsAtAnEntryThatVanishesWhileItIsExamined)
{
    tree.file("f");
    Faults faults;
    faults.lstat = [](const std::string& path) {
        std::filesystem::remove(path);
        return 0;
    };
    Iterator iterator = open("", files);

    EXPECT_EQ(step(iterator), "end");
    EXPECT_FALSE(iterator._lastIsFile);
}

TEST_F(FailingWalk, HasPassedTheEntryThatFailed)
{
    tree.file("f");
    tree.file("g");
    Iterator iterator = open("", files);
    const std::string failing = Poco::DirectoryIterator(tree.path()).name();
    std::filesystem::remove(tree.path(failing));

    Poco::Path entry;
    EXPECT_THROW(iterator.getNextFromFileSystem(entry), Poco::FileNotFoundException);
    EXPECT_TRUE(iterator.getNextFromFileSystem(entry));
    EXPECT_NE(entry.getFileName(), failing);
    EXPECT_FALSE(iterator.getNextFromFileSystem(entry));
}

TEST_F(FailingWalk, TakesAFileThatCantBeExaminedForNoLink)
{
    tree.file("f");
    Faults faults;
    faults.lstat = [](const std::string&) { return EIO; };
    const RecordedLog log;

    EXPECT_THAT(filesIn(), ElementsAre("f"));
    EXPECT_THAT(log.statements(),
                ElementsAre("plain Warning: could not stat " + tree.path("f") + ", reason :5"));
}

TEST_F(FailingWalk, DoesNotTakeNewDirectoriesForFiles)
{
    changes.addCreatedDir(directory("new"));
    Iterator iterator = open("", files);

    Poco::Path entry;
    EXPECT_FALSE(iterator.getNextFromCreatedDirs(entry));
}

} // namespace

} // namespace zoltest
