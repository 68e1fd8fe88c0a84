#include "FileFlag.h"
#include "PreviewFixture.h"

#include <gtest/gtest.h>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using zolhost::Plan;
using zoltest::FileFlag;
using Outlook = zolhost::Preview::Item::Outlook;

TEST_F(PreviewTest, FileInPlaceOfADirectoryStaysAndTheCommitGoesOn)
{
    changes.makeDirectory("a");
    changes.makeDirectory("b");
    changes.makeDirectory("c");
    tree.file("a");
    mkfifo(tree.path("b").c_str(), 0600);
    const auto preview = committed();
    EXPECT_EQ(items(preview),
              (Texts{"fails a/: Not a directory: something else of this name is there",
                     "fails b/: Not a directory: something else of this name is there", "done c/"}));
    EXPECT_EQ(made(preview), Texts{"+c 0770"});
}

TEST_F(PreviewTest, FileAboveADirectoryEndsTheCommit)
{
    tree.file("z");
    tree.directory("t");
    tree.file("y");
    changes.makeDirectory("a");
    changes.makeDirectory("f/b");
    changes.makeDirectory("g");
    changes.removeTree("t");
    changes.removeFile("y");
    tree.file("f");
    const auto preview = committed();
    EXPECT_EQ(items(preview),
              (Texts{"done y", "done a/", "fails f/b/: Not a directory: f",
                     "not reached g/: the commit ends at f/b", "not reached t/: the commit ends at f/b"}));
    EXPECT_EQ(made(preview), Texts{"+a 0770"});
    EXPECT_EQ(removed(preview), Texts{"y"});
}

TEST_F(PreviewTest, LinkThatLeadsNowhereInPlaceOfADirectoryStays)
{
    changes.makeDirectory("l");
    tree.link("l", "nowhere");
    const auto preview = committed();
    EXPECT_EQ(items(preview),
              Texts{"fails l/: No such file or directory: a link that leads nowhere is there"});
    EXPECT_TRUE(preview.changesNothing());
}

TEST_F(PreviewTest, DirectoryBelowALinkThatLeadsNowhereEndsTheCommit)
{
    changes.makeDirectory("l/a");
    changes.makeDirectory("m");
    tree.link("l", "nowhere");
    const auto preview = committed();
    EXPECT_EQ(items(preview),
              (Texts{"fails l/a/: No such file or directory: l", "not reached m/: the commit ends at l/a"}));
}

TEST_F(PreviewTest, LinksThatGoRoundEndTheCommit)
{
    changes.makeDirectory("l/a");
    tree.link("l", "l");
    EXPECT_EQ(items(committed()), Texts{"fails l/a/: Too many levels of symbolic links: l"});
}

TEST_F(PreviewTest, NameThatIsTooLongEndsTheCommit)
{
    const std::string name(256, 'x');
    changes.makeDirectory("a");
    changes.makeDirectory("a/" + name);
    changes.makeDirectory("b");
    EXPECT_EQ(items(committed()), (Texts{"done a/", "fails a/" + name + "/: File name too long: a/" + name,
                                         "not reached b/: the commit ends at a/" + name}));
}

TEST_F(PreviewTest, ImmutableFileStaysWithTheDirectoriesAboveIt)
{
    tree.file("d/e/f");
    changes.removeTree("d");
    changes.removeFile("d/e/f");
    const FileFlag flag(tree.path("d/e/f"), FS_IMMUTABLE_FL);
    if (!flag.isSet())
    {
        GTEST_SKIP() << "no file can be made immutable here";
    }
    const auto preview = committed();
    EXPECT_EQ(
        items(preview),
        (Texts{"fails d/e/f: Operation not permitted: the file is immutable",
               "fails d/: Directory not empty, in d/e/f: Operation not permitted: the file is immutable"}));
    EXPECT_TRUE(preview.changesNothing());
}

TEST_F(PreviewTest, TreeIsRemovedUpToTheFirstObstacleInTheDisksOrder)
{
    for (int i = 0; i < 20; ++i)
    {
        tree.file("d/e" + std::to_string(i) + "/f");
    }
    changes.removeTree("d");
    changes.removeTree("d/e3");
    const FileFlag flag(tree.path("d/e7/f"), FS_IMMUTABLE_FL);
    if (!flag.isSet())
    {
        GTEST_SKIP() << "no file can be made immutable here";
    }
    const auto preview = committed();
    EXPECT_EQ(preview.items[0].outlook, Outlook::Fails);
    const std::size_t byItself = preview.items[1].outlook == Outlook::Done ? 1 : 0;
    EXPECT_EQ(preview.removed.size(), 2 * (preview.items[0].contents.directories + byItself));
}

TEST_F(PreviewTest, ImmutableDirectoryKeepsItsEntriesAndItsMode)
{
    tree.file("d/f");
    tree.directory("t");
    changes.removeTree("d");
    changes.removeTree("t");
    changes.makeDirectory("m");
    changes.makeDirectory("m/x");
    tree.directory("m");
    const FileFlag first(tree.path("d"), FS_IMMUTABLE_FL);
    const FileFlag second(tree.path("m"), FS_IMMUTABLE_FL);
    if (!first.isSet() || !second.isSet())
    {
        GTEST_SKIP() << "no directory can be made immutable here";
    }
    auto preview = changes.preview();
    EXPECT_EQ(items(preview),
              (Texts{"fails m/: Operation not permitted: the directory is immutable",
                     "fails m/x/: Operation not permitted: the directory above is immutable",
                     "not reached d/: the commit ends at m/x", "not reached t/: the commit ends at m/x"}));
    EXPECT_TRUE(committed().changesNothing());

    Plan plan;
    plan.removeTree(tree.path("d/"));
    EXPECT_EQ(items(previewOf(plan)), Texts{"fails d/: Directory not empty, in d/f: Operation not "
                                            "permitted: the directory above is immutable"});
}

TEST_F(PreviewTest, AppendOnlyDirectoryTakesNewOnesAndGivesNothing)
{
    tree.file("d/f");
    changes.makeDirectory("d/x");
    changes.removeFile("d/f");
    const FileFlag flag(tree.path("d"), FS_APPEND_FL);
    if (!flag.isSet())
    {
        GTEST_SKIP() << "no directory can be made append-only here";
    }
    EXPECT_EQ(items(committed()),
              (Texts{"fails d/f: Operation not permitted: the directory above is append-only", "done d/x/"}));
}

TEST_F(PreviewTest, MountedFileSystemLosesItsContentAndStays)
{
    tree.directory("d/m");
    if (mount("none", tree.path("d/m").c_str(), "tmpfs", 0, nullptr) != 0)
    {
        GTEST_SKIP() << "no file system can be mounted here";
    }
    tree.file("d/m/f");
    changes.removeTree("d");
    const auto preview = committed();
    EXPECT_EQ(items(preview), Texts{"fails d/: Directory not empty, in d/m: Device or resource busy: a file "
                                    "system is mounted there"});
    EXPECT_EQ(removed(preview), Texts{"d/m/f"});
    EXPECT_EQ(umount(tree.path("d/m").c_str()), 0);
}

TEST_F(PreviewTest, ReadOnlyFileSystemStaysAsItIs)
{
    tree.directory("m");
    if (mount("none", tree.path("m").c_str(), "tmpfs", 0, nullptr) != 0)
    {
        GTEST_SKIP() << "no file system can be mounted here";
    }
    tree.file("m/f");
    tree.directory("m/d");
    changes.removeFile("m/f");
    changes.makeDirectory("m/d");
    changes.makeDirectory("m/x");
    EXPECT_EQ(mount("none", tree.path("m").c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    EXPECT_EQ(items(committed()),
              (Texts{"fails m/f: Read-only file system", "fails m/d/: Read-only file system",
                     "fails m/x/: Read-only file system"}));
    EXPECT_EQ(umount(tree.path("m").c_str()), 0);
}

TEST_F(PreviewTest, DirectoryThatMayNotBeWrittenKeepsWhatIsInIt)
{
    EXPECT_TRUE(zoltest::holdsForOrdinaryUser(tree, [&] {
        tree.file("d/f");
        tree.file("t/e/f");
        tree.directory("u");
        changes.removeFile("d/f");
        changes.removeTree("t");
        changes.removeTree("u");
        changes.makeDirectory("d/x");
        tree.chmod("d", 0555);
        EXPECT_EQ(
            items(changes.preview()),
            (Texts{"fails d/f: Permission denied: the directory above may not be written",
                   "fails d/x/: Permission denied: the directory above may not be written",
                   "not reached t/: the commit ends at d/x", "not reached u/: the commit ends at d/x"}));
        EXPECT_TRUE(committed().changesNothing());
    }));
}

TEST_F(PreviewTest, TreeStaysFromADirectoryOnThatMayNotBeReadOrWritten)
{
    EXPECT_TRUE(zoltest::holdsForOrdinaryUser(tree, [&] {
        tree.file("t/e/f");
        tree.directory("u/v");
        changes.removeTree("t");
        changes.removeTree("u");
        tree.chmod("t/e", 0500);
        tree.chmod("u/v", 0300);
        const auto preview = committed();
        EXPECT_EQ(items(preview),
                  (Texts{"fails t/: Directory not empty, in t/e/f: Permission denied: the directory above "
                         "may not be written",
                         "fails u/: Directory not empty, in u/v: Permission denied: the directory may not "
                         "be read"}));
        EXPECT_TRUE(preview.changesNothing());
    }));
}

TEST_F(PreviewTest, DirectoryThatMayNotBeSearchedKeepsWhatIsInIt)
{
    EXPECT_TRUE(zoltest::holdsForOrdinaryUser(tree, [&] {
        tree.file("d/f");
        changes.removeFile("d/f");
        tree.chmod("d", 0600);
        const auto preview = changes.preview();
        EXPECT_EQ(items(preview), Texts{"fails d/f: Permission denied"});
        EXPECT_TRUE(preview.changesNothing());
        changes.commit();
        tree.chmod("d", 0700);
        EXPECT_TRUE(tree.exists("d/f"));
    }));
}

TEST_F(PreviewTest, DirectoryThatGetsItsModeCanTakeNewOnes)
{
    EXPECT_TRUE(zoltest::holdsForOrdinaryUser(tree, [&] {
        changes.makeDirectory("d");
        changes.makeDirectory("d/x");
        tree.directory("d");
        tree.chmod("d", 0500);
        EXPECT_EQ(made(committed()), (Texts{"d 0770", "+d/x 0770"}));
    }));
}

TEST_F(PreviewTest, WhatBelongsToAnotherUserKeepsItsModeAndItsPlaceInAStickyDirectory)
{
    if (geteuid() != 0)
    {
        GTEST_SKIP() << "only root can give files away";
    }
    tree.directory("s/d");
    tree.file("s/f");
    tree.directory("d");
    tree.chmod("s", 01777);
    EXPECT_TRUE(zoltest::holdsForOrdinaryUser(tree, [&] {
        changes.removeFile("s/f");
        changes.removeTree("s/d");
        changes.makeDirectory("d");
        const auto preview = committed();
        EXPECT_EQ(items(preview),
                  (Texts{"fails s/f: Operation not permitted: the directory above is sticky and the file "
                         "belongs to another user",
                         "fails d/: Operation not permitted: the directory belongs to another user",
                         "fails s/d/: Operation not permitted: the directory above is sticky and the "
                         "directory belongs to another user"}));
        EXPECT_TRUE(preview.changesNothing());
    }));
}

TEST_F(PreviewTest, SetgidBitIsLostWhereTheUserIsNotInTheGroup)
{
    if (geteuid() != 0)
    {
        GTEST_SKIP() << "only root can give directories to other groups";
    }
    tree.directory("g");
    tree.chmod("g", 02777);
    EXPECT_TRUE(zoltest::holdsForOrdinaryUser(tree, [&] {
        changes.makeDirectory("g/a");
        changes.makeDirectory("g/a/b");
        EXPECT_EQ(made(committed()), (Texts{"+g/a 0770", "+g/a/b 0770"}));
    }));
}
