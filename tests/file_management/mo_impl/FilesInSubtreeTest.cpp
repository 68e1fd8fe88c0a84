#include "Faults.h"
#include "ReadsFixture.h"
#include "SpecialFiles.h"

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
    tree.file("a/d/g");
    tree.directory("a/e");
    Texts examined;
    Faults faults;
    faults.lstat = [&](const std::string& path) {
        examined.push_back(path);
        return 0;
    };

    EXPECT_TRUE(hasFiles("a"));
    EXPECT_THAT(examined, Each(AnyOf(tree.path("a/f"), tree.path("a/d"), tree.path("a/e"))));
    EXPECT_EQ(examined.back(), tree.path("a/f"));
}

TEST_F(FilesInSubtree, AreLookedForElsewhereWhenAWalkFails)
{
    tree.file("a/vanishing");
    tree.file("a/d/f");
    Faults faults;
    faults.lstat = [&](const std::string& path) {
        if (path == tree.path("a/vanishing"))
        {
            std::remove(path.c_str());
        }
        return 0;
    };
    const RecordedLog log;

    EXPECT_TRUE(hasFiles("a"));
    EXPECT_THAT(log.statements(),
                ElementsAre("plain Warning: could not stat " + tree.path("a/vanishing") + ", reason :2",
                            "plain Unexpected exception :File not found"));
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
