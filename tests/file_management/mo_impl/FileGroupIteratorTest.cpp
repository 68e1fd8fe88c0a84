#include "Faults.h"
#include "LiteralPath.h"
#include "WalkFixture.h"
#include "support/WorkingDirectory.h"

#include <Poco/DirectoryIterator.h>
#include <filesystem>
#include <type_traits>

using namespace testing;

namespace zoltest
{

namespace
{

using FileGroupWalk = Walk;

TEST_F(FileGroupWalk, YieldsFilesInFileFormAndDirectoriesInDirectoryForm)
{
    tree.file("a/report.txt");
    tree.directory("a/logs");

    EXPECT_THAT(filesIn("a"), ElementsAre("a/report.txt"));
    EXPECT_THAT(directoriesIn("a"), ElementsAre("a/logs/"));
}

TEST_F(FileGroupWalk, KeepsTheOrderOfTheDirectoryOnDisk)
{
    Texts expected;
    for (int i = 0; i < 40; ++i)
    {
        tree.file("file" + std::to_string(i));
    }
    for (Poco::DirectoryIterator entry(tree.path()), end; entry != end; ++entry)
    {
        expected.push_back(entry.name());
    }

    EXPECT_THAT(expected, SizeIs(40));
    EXPECT_EQ(filesIn(), expected);
}

TEST_F(FileGroupWalk, YieldsWhatIsOnDiskBeforeNewDirectoriesInTheOrderOfTheirTexts)
{
    tree.directory("z");
    for (const char* name : {"b", "a", "a!", "B", "a0"})
    {
        changes.addCreatedDir(directory(name));
    }

    // the slash that ends a directory's text sorts behind the exclamation mark
    EXPECT_THAT(directoriesIn(), ElementsAre("z/", "B/", "a!/", "a/", "a0/", "b/"));
}

TEST_F(FileGroupWalk, OfAnEmptyDirectoryEndsAtOnce)
{
    EXPECT_THAT(filesIn(), IsEmpty());
    EXPECT_THAT(directoriesIn(), IsEmpty());
}

TEST_F(FileGroupWalk, GivesNoSelfAndNoParent)
{
    tree.directory("a/b");

    EXPECT_THAT(directoriesIn("a"), ElementsAre("a/b/"));
    EXPECT_THAT(directoriesIn("a/b"), IsEmpty());
}

TEST_F(FileGroupWalk, DoesNotDescend)
{
    tree.file("a/b/deep");

    EXPECT_THAT(filesIn(), IsEmpty());
    EXPECT_THAT(directoriesIn(), ElementsAre("a/"));
}

TEST_F(FileGroupWalk, OfTheTopOfTheDiskGivesWhatStandsThere)
{
    Iterator iterator(ZolFileManagement::literalPath("/"), changes, directories);
    std::vector<std::string> found;
    Poco::Path entry;
    while (iterator.getNext(entry))
    {
        found.push_back(entry.toString());
    }

    EXPECT_THAT(found, Contains("/usr/"));
}

TEST_F(FileGroupWalk, OfDirectoriesThatLookLikeDevicesIsThatOfTheseDirectories)
{
    tree.file("a:/b:/f");
    const WorkingDirectory here(tree.path());
    Iterator iterator(ZolFileManagement::literalPath("a:/b:/"), changes, files);

    EXPECT_EQ(step(iterator), "a:/b:/f");
    EXPECT_EQ(step(iterator), "end");
}

TEST_F(FileGroupWalk, OfAFileThatIsNamedByDotsIsThatOfTheDirectoryWhichTheyMean)
{
    tree.file("a/b/deleted");
    tree.file("a/b/left");
    tree.directory("a/b/c");
    changes.addDeletedFile(file("a/b/deleted"));
    for (const char* place : {"a/b/.", "a/b/c/.."})
    {
        Iterator iterator(ZolFileManagement::literalPath(tree.path(place)), changes, files);
        EXPECT_THAT(rest(iterator), ElementsAre("a/b/left")) << place;
    }
}

TEST_F(FileGroupWalk, LooksAtAnEntryWhenItsTurnHasCome)
{
    tree.file("a");
    tree.file("b");
    Iterator iterator = open("", files);
    const std::string first = step(iterator);
    const std::string second = first == "a" ? "b" : "a";
    std::filesystem::remove(tree.path(second));
    tree.directory(second);

    EXPECT_EQ(step(iterator), "end");
}

TEST_F(FileGroupWalk, WithinACallLooksAtWhatTheDirectoryDoesNotTell)
{
    tree.file("f");
    tree.directory("d");
    tree.link("l", tree.path("d"));
    tree.link("m", "nothing");
    Faults faults;
    faults.entryRead = [](dirent64& entry) { entry.d_type = DT_UNKNOWN; };
    Iterator ofFiles(directory(), changes, files, Iterator::Span::OneCall);
    EXPECT_THAT(rest(ofFiles), ElementsAre("f"));
    EXPECT_TRUE(ofFiles.hasMoreThanFiles());
    Iterator ofDirectories(directory(), changes, directories, Iterator::Span::OneCall);
    EXPECT_THAT(rest(ofDirectories), UnorderedElementsAre("d/", "l/"));
}

TEST_F(FileGroupWalk, StaysAtItsEnd)
{
    tree.file("a");
    Iterator iterator = open("", files);
    EXPECT_EQ(step(iterator), "a");
    EXPECT_EQ(step(iterator), "end");

    tree.file("b");
    EXPECT_EQ(step(iterator), "end");
    EXPECT_EQ(step(iterator), "end");
}

TEST_F(FileGroupWalk, WritesNothingAboutWhatIsOrdinary)
{
    tree.file("f");
    tree.directory("d");
    changes.addCreatedDir(directory("new"));
    const RecordedLog log;

    filesIn();
    directoriesIn();

    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(FileGroupWalk, WhenClearedIsAtItsEndAndKeepsWhatItSawLast)
{
    tree.file("f");
    changes.addCreatedDir(directory("new"));
    Iterator iterator = open("", directories);
    iterator._lastIsFile = true;

    iterator.clear();

    EXPECT_EQ(step(iterator), "end");
    EXPECT_TRUE(iterator._lastIsFile);
}

TEST_F(FileGroupWalk, ThrowsNothingOutOfItsOpeningAndItsSteps)
{
    using Changes = ZolFileManagement::NonComittedData;
    EXPECT_TRUE((std::is_nothrow_constructible_v<Iterator, const Poco::Path&, const Changes&, bool>));
    EXPECT_TRUE(noexcept(std::declval<Iterator&>().getNext(std::declval<Poco::Path&>())));
}

// How the last entry that was taken for a file or a directory is remembered.

TEST_F(FileGroupWalk, RemembersNoFileBeforeAnyEntry)
{
    changes.addCreatedDir(directory("new"));
    Iterator iterator = open("", directories);
    EXPECT_FALSE(iterator._lastIsFile);

    EXPECT_EQ(step(iterator), "new/");
    EXPECT_FALSE(iterator._lastIsFile);
}

TEST_F(FileGroupWalk, RemembersAnUnwantedFileWhileNewDirectoriesAreYielded)
{
    tree.file("f");
    changes.addCreatedDir(directory("new"));
    changes.addCreatedDir(directory("other"));
    Iterator iterator = open("", directories);

    EXPECT_EQ(step(iterator), "new/");
    EXPECT_TRUE(iterator._lastIsFile);
    EXPECT_EQ(step(iterator), "other/");
    EXPECT_TRUE(iterator._lastIsFile);
}

TEST_F(FileGroupWalk, RemembersAFileThatTheTransactionDeleted)
{
    tree.file("f");
    changes.addDeletedFile(file("f"));
    changes.addCreatedDir(directory("new"));
    Iterator iterator = open("", directories);

    EXPECT_EQ(step(iterator), "new/");
    EXPECT_TRUE(iterator._lastIsFile);
}

TEST_F(FileGroupWalk, RemembersADeletedDirectoryToo)
{
    tree.directory("d");
    changes.addDeletedDir(directory("d"));
    Iterator iterator = open("", directories);
    iterator._lastIsFile = true;

    EXPECT_EQ(step(iterator), "end");
    EXPECT_FALSE(iterator._lastIsFile);
}

TEST_F(FileGroupWalk, RemembersAnUnwantedDirectory)
{
    tree.directory("d");
    Iterator iterator = open("", files);
    iterator._lastIsFile = true;

    EXPECT_EQ(step(iterator), "end");
    EXPECT_FALSE(iterator._lastIsFile);
}

TEST_F(FileGroupWalk, RemembersTheLastOfSeveralEntriesInTheOrderOnDisk)
{
    // enough names to meet both orders, which are those of the file system
    for (int i = 0; i < 32; ++i)
    {
        const std::string parent = "parent" + std::to_string(i);
        tree.file(parent + "/f" + std::to_string(i * 7919));
        tree.directory(parent + "/d" + std::to_string(i * 104729));
        bool lastIsFile = false;
        for (Poco::DirectoryIterator entry(tree.path(parent)), end; entry != end; ++entry)
        {
            lastIsFile = entry->isFile();
        }
        changes.addCreatedDir(directory(parent + "/new"));
        Iterator iterator = open(parent, directories);

        EXPECT_THAT(rest(iterator), SizeIs(2));
        EXPECT_EQ(iterator._lastIsFile, lastIsFile) << parent;
    }
}

} // namespace

} // namespace zoltest
