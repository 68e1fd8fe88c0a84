#include "Faults.h"
#include "ReadsFixture.h"
#include "SpecialFiles.h"

#include <cerrno>
#include <cstdio>

using namespace testing;

namespace zoltest
{

namespace
{

class FilesInSubtree : public Reads
{
protected:
    bool hasFiles(const std::string& name)
    {
        return worker.isDirContainingFiles(Poco::Path(tree.path(name)).makeDirectory());
    }
};

TEST_F(FilesInSubtree, AreFoundAtAnyDepth)
{
    tree.file("one/f");
    tree.file("deep/a/b/c/f");
    tree.directory("deep/a/empty");
    tree.directory("none/a/b/c");

    EXPECT_TRUE(hasFiles("one"));
    EXPECT_TRUE(hasFiles("deep"));
    EXPECT_FALSE(hasFiles("none"));
    EXPECT_FALSE(hasFiles("missing"));
}

TEST_F(FilesInSubtree, DoNotIncludeWhatAWalkOfFilesSkips)
{
    tree.file("markers/.filemnohousekeeping");
    tree.file("markers/.filemnodirectorycreate");
    tree.file("markers/d/.filemnodirectorydelete");
    tree.link("links/toFile", tree.file("target"));
    tree.link("links/toNothing", tree.path("nowhere"));
    tree.directory("pipes");
    makePipe(tree.path("pipes/p"));

    EXPECT_FALSE(hasFiles("markers"));
    EXPECT_FALSE(hasFiles("links"));
    EXPECT_FALSE(hasFiles("pipes"));
}

TEST_F(FilesInSubtree, DoNotIncludeDeletedOnes)
{
    tree.file("a/b/f");
    remove(fileDn("f", groupDn("b", groupDn("a"))));
    EXPECT_FALSE(hasFiles("a"));

    tree.file("a/b/g");
    EXPECT_TRUE(hasFiles("a"));
}

TEST_F(FilesInSubtree, AreNotLookedForInADeletedDirectory)
{
    tree.file("a/b/f");
    removeByForce(groupDn("b", groupDn("a")));

    EXPECT_FALSE(hasFiles("a"));
    EXPECT_TRUE(hasFiles("a/b"));
}

TEST_F(FilesInSubtree, AreLookedForInNewDirectoriesToo)
{
    create("new", groupDn("a"));
    create("inner", groupDn("new", groupDn("a")));
    EXPECT_FALSE(hasFiles("a"));

    tree.file("a/new/inner/f");
    EXPECT_TRUE(hasFiles("a"));
}

TEST_F(FilesInSubtree, AreFoundThroughALinkToADirectory)
{
    tree.file("target/d/f");
    tree.link("a/link", tree.path("target"));

    EXPECT_TRUE(hasFiles("a"));
}

TEST_F(FilesInSubtree, AreLookedForInADirectoryBeforeItsSubdirectoriesAndNotAfterTheFirst)
{
    tree.file("a/f");
    for (const char* subdirectory : {"d", "e", "g"})
    {
        // whoever walks through it tells of the link
        tree.link(std::string("a/") + subdirectory + "/link", tree.path("nowhere"));
    }
    const RecordedLog log;

    EXPECT_TRUE(hasFiles("a"));
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(FilesInSubtree, AreLookedForElsewhereWhenAWalkFails)
{
    const std::string one = tree.file("a/one/vanishing");
    const std::string two = tree.file("a/two/vanishing");
    Faults faults;
    faults.lstat = [&](const std::string& path) {
        if (path == one || path == two)
        {
            std::remove(path.c_str());
        }
        return 0;
    };
    const RecordedLog log;

    EXPECT_FALSE(hasFiles("a"));
    EXPECT_THAT(log.statements(), UnorderedElementsAre("plain Warning: could not stat " + one + ", reason :2",
                                                       "plain Unexpected exception :File not found",
                                                       "plain Warning: could not stat " + two + ", reason :2",
                                                       "plain Unexpected exception :File not found"));

    tree.file("a/one/vanishing");
    tree.file("a/three/f");
    EXPECT_TRUE(hasFiles("a"));
}

TEST_F(FilesInSubtree, AreFoundBelowADirectoryThatCantBeReadTheFirstTime)
{
    tree.file("a/b/f");
    Faults faults;
    int calls = 0;
    faults.getdents = [&calls] { return ++calls == 1 ? EIO : 0; };

    EXPECT_TRUE(hasFiles("a"));
}

TEST_F(FilesInSubtree, AreNoneWhereTheDirectoryCantBeWalked)
{
    tree.file("f");
    const RecordedLog log;

    EXPECT_FALSE(hasFiles("f"));
    EXPECT_THAT(log.statements(), ElementsAre("plain Unexpected exception :Cannot open file",
                                              "plain Unexpected exception :Cannot open file"));
}

} // namespace

} // namespace zoltest
