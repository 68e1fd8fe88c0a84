#include "WalkFixture.h"

using namespace testing;

namespace zoltest
{

namespace
{

using UncommittedChanges = Walk;

TEST_F(UncommittedChanges, ShowANewDirectoryBehindThoseOnDisk)
{
    tree.directory("z");
    changes.addCreatedDir(directory("new"));

    EXPECT_THAT(directoriesIn(), ElementsAre("z/", "new/"));
}

TEST_F(UncommittedChanges, ShowANewDirectoryInItsParentOnly)
{
    changes.addCreatedDir(directory("a"));
    changes.addCreatedDir(directory("a/b"));
    changes.addCreatedDir(directory("c/d"));

    EXPECT_THAT(directoriesIn(), ElementsAre("a/"));
    EXPECT_THAT(directoriesIn("a"), ElementsAre("a/b/"));
    EXPECT_THAT(directoriesIn("a/b"), IsEmpty());
    EXPECT_THAT(directoriesIn("c"), ElementsAre("c/d/"));
}

TEST_F(UncommittedChanges, ShowNoNewDirectoryAmongFiles)
{
    tree.file("f");
    changes.addCreatedDir(directory("new"));

    EXPECT_THAT(filesIn(), ElementsAre("f"));
    EXPECT_THAT(filesIn("new"), IsEmpty());
}

TEST_F(UncommittedChanges, ShowNewDirectoriesBelowADirectoryThatIsNotOnDiskAndWriteNothing)
{
    changes.addCreatedDir(directory("a"));
    changes.addCreatedDir(directory("a/c"));
    changes.addCreatedDir(directory("a/b"));
    const RecordedLog log;

    EXPECT_THAT(directoriesIn("a"), ElementsAre("a/b/", "a/c/"));
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(UncommittedChanges, ShowADirectoryTwiceThatIsNewAndOnDiskToo)
{
    tree.directory("a");
    changes.addCreatedDir(directory("a"));

    EXPECT_THAT(directoriesIn(), ElementsAre("a/", "a/"));
}

TEST_F(UncommittedChanges, HideADeletedDirectoryInItsParent)
{
    tree.directory("a");
    tree.directory("b");
    changes.addDeletedDir(directory("a"));

    EXPECT_THAT(directoriesIn(), ElementsAre("b/"));
}

TEST_F(UncommittedChanges, LeaveWhatLiesInADeletedDirectoryVisible)
{
    tree.file("a/f");
    tree.directory("a/b");
    changes.addDeletedDir(directory("a"));

    EXPECT_THAT(filesIn("a"), ElementsAre("a/f"));
    EXPECT_THAT(directoriesIn("a"), ElementsAre("a/b/"));
}

TEST_F(UncommittedChanges, HideADeletedFile)
{
    tree.file("f");
    tree.file("g");
    changes.addDeletedFile(file("f"));

    EXPECT_THAT(filesIn(), ElementsAre("g"));
}

TEST_F(UncommittedChanges, HideAFileThatIsToGoAmongTheDirectories)
{
    tree.file("f");
    tree.file("g");
    changes.addDeletedDir(file("f"));

    EXPECT_THAT(filesIn(), ElementsAre("g"));
}

TEST_F(UncommittedChanges, HideADirectoryThatIsToGoAmongTheFiles)
{
    tree.directory("a");
    tree.directory("b");
    changes.addDeletedFile(directory("a"));

    EXPECT_THAT(directoriesIn(), ElementsAre("b/"));
}

TEST_F(UncommittedChanges, HideNothingByTheOtherFormOfItsPath)
{
    tree.file("f");
    tree.directory("a");
    changes.addDeletedFile(directory("f"));
    changes.addDeletedDir(directory("f"));
    changes.addDeletedFile(file("a"));
    changes.addDeletedDir(file("a"));

    EXPECT_THAT(filesIn(), ElementsAre("f"));
    EXPECT_THAT(directoriesIn(), ElementsAre("a/"));
}

TEST_F(UncommittedChanges, ShowADirectoryThatWasDeletedAndCreatedAgainOnce)
{
    tree.directory("a");
    changes.addDeletedDir(directory("a"));
    changes.addCreatedDir(directory("a"));

    EXPECT_THAT(directoriesIn(), ElementsAre("a/"));
}

TEST_F(UncommittedChanges, AreSeenByAnOpenWalkWhenTheyDeleteAFile)
{
    tree.file("f");
    Iterator iterator = open("", files);

    changes.addDeletedFile(file("f"));

    EXPECT_EQ(step(iterator), "end");
}

TEST_F(UncommittedChanges, AreSeenByAnOpenWalkWhenTheyDeleteADirectory)
{
    tree.directory("a");
    Iterator iterator = open("", directories);

    changes.addDeletedDir(directory("a"));

    EXPECT_EQ(step(iterator), "end");
}

TEST_F(UncommittedChanges, AreNotSeenByAnOpenWalkWhenTheyCreateADirectory)
{
    tree.directory("a");
    Iterator iterator = open("", directories);

    changes.addCreatedDir(directory("new"));

    EXPECT_THAT(rest(iterator), ElementsAre("a/"));
}

TEST_F(UncommittedChanges, AreStillShownByAnOpenWalkWhenADirectoryIsNoLongerCreated)
{
    changes.addCreatedDir(directory("new"));
    Iterator iterator = open("", directories);

    changes.addDeletedDir(directory("new"));

    EXPECT_THAT(rest(iterator), ElementsAre("new/"));
}

TEST_F(UncommittedChanges, LeaveAnOpenWalkItsPositionAndItsNewDirectoriesWhenTheyAreDropped)
{
    tree.directory("a");
    changes.addDeletedDir(directory("a"));
    changes.addCreatedDir(directory("new"));
    Iterator iterator = open("", directories);

    changes.reset();

    EXPECT_THAT(rest(iterator), ElementsAre("a/", "new/"));
}

} // namespace

} // namespace zoltest
