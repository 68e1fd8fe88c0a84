#include "staging/Obstacle.h"

#include "FileFlag.h"
#include "StagingTest.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>

using zoltest::FileFlag;

namespace
{

class ObstacleTest : public zoltest::StagingTest
{
protected:
    std::string toRemoving(const std::string& name) const
    {
        return relative(zolhost::obstacleToRemoving(tree.path(name)));
    }
    std::string toMaking(const std::string& name) const
    {
        return relative(zolhost::obstacleToMaking(tree.path(name)));
    }
};

} // namespace

TEST_F(ObstacleTest, IsNoneWhereNothingIsInTheWay)
{
    tree.file("d/f");
    tree.link("l", "nowhere");
    for (const char* const name : {"d/f", "d", "d/", "l", "missing", "d/f/missing"})
    {
        EXPECT_EQ(toRemoving(name), "") << name;
    }
    for (const char* const name : {"d", "d/", "new/", "new/below/"})
    {
        EXPECT_EQ(toMaking(name), "") << name;
    }
    EXPECT_EQ(tree.listing().size(), 3U) << "only looked";
}

TEST_F(ObstacleTest, IsAFlag)
{
    tree.file("d/e/f");
    tree.file("g");
    const FileFlag immutable(tree.path("d/e"), FS_IMMUTABLE_FL);
    const FileFlag appendOnly(tree.path("g"), FS_APPEND_FL);
    if (!immutable.isSet() || !appendOnly.isSet())
    {
        GTEST_SKIP() << "no such flags here";
    }
    EXPECT_EQ(toRemoving("g"), "Operation not permitted: the file is append-only");
    EXPECT_EQ(toRemoving("d/e/f"), "Operation not permitted: the directory above is immutable");
    EXPECT_EQ(toRemoving("d/e/"),
              "Directory not empty, in e/f: Operation not permitted: the directory above is immutable");
    EXPECT_EQ(toRemoving("d"),
              "Directory not empty, in d/e/f: Operation not permitted: the directory above is immutable");
    EXPECT_EQ(toMaking("d/e/x"), "Operation not permitted: the directory above is immutable");
    EXPECT_EQ(toMaking("d/e/"), "Operation not permitted: the directory is immutable");
}

TEST_F(ObstacleTest, IsAMountedFileSystem)
{
    tree.directory("m");
    if (mount("none", tree.path("m").c_str(), "tmpfs", MS_RDONLY, nullptr) != 0)
    {
        GTEST_SKIP() << "no file system can be mounted here";
    }
    EXPECT_EQ(toRemoving("m"), "Device or resource busy: a file system is mounted there");
    EXPECT_EQ(toMaking("m/x"), "Read-only file system");
    EXPECT_EQ(toMaking("m"), "Read-only file system");
    EXPECT_EQ(umount(tree.path("m").c_str()), 0);
}

TEST_F(ObstacleTest, IsSomethingElseInPlaceOfADirectory)
{
    tree.file("f");
    tree.link("l", "nowhere");
    EXPECT_EQ(toMaking("f/"), "Not a directory: something else of this name is there");
    EXPECT_EQ(toMaking("f/x/"), "Not a directory: f");
    EXPECT_EQ(toMaking("l/"), "No such file or directory: a link that leads nowhere is there");
}

TEST_F(ObstacleTest, IsADirectoryThatMayNotBeWritten)
{
    EXPECT_TRUE(zoltest::holdsForOrdinaryUser(tree, [&] {
        tree.file("d/f");
        tree.chmod("d", 0500);
        EXPECT_EQ(toRemoving("d/f"), "Permission denied: the directory above may not be written");
        EXPECT_EQ(toMaking("d/x"), "Permission denied: the directory above may not be written");
        EXPECT_EQ(toRemoving("d"), "Directory not empty, in d/f: Permission denied: the directory above may "
                                   "not be written");
    }));
}
