#include "staging/Preview.h"

#include "FileFlag.h"
#include "StagingTest.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using zolhost::EntryKind;
using zolhost::Plan;
using zolhost::Preview;
using zoltest::FileFlag;
using zoltest::ScopedMask;
using Outlook = Preview::Item::Outlook;
using Texts = std::vector<std::string>;

namespace
{

class PreviewTest : public zoltest::StagingTest
{
protected:
    /// The items as "outlook name: why", names relative to the tree.
    Texts items(const Preview& preview) const
    {
        const std::vector<std::string> outlooks = {"done", "nothing", "fails", "not reached"};
        Texts texts;
        for (const auto& item : preview.items)
        {
            texts.push_back(outlooks[static_cast<std::size_t>(item.outlook)] + " " + relative(item.path) +
                            (item.why.empty() ? "" : ": ") + relative(item.why));
        }
        return texts;
    }

    /// "name mode", the mode in octal digits, with a plus sign in front of what is new.
    Texts made(const Preview& preview) const
    {
        Texts texts;
        for (const auto& made : preview.made)
        {
            std::string mode(5, '0');
            snprintf(mode.data(), mode.size(), "%04o", made.mode);
            texts.push_back((made.isThere ? "" : "+") + relative(made.path) + " " + mode.substr(0, 4));
        }
        return texts;
    }

    Texts removed(const Preview& preview) const
    {
        Texts texts;
        for (const auto& removed : preview.removed)
        {
            texts.push_back(relative(removed.path));
        }
        return texts;
    }

    /// Takes the preview, commits and compares. Returns the preview.
    Preview committed()
    {
        auto preview = changes.preview();
        const zoltest::Expectation expectation(preview, tree.path());
        changes.commit();
        EXPECT_EQ(zoltest::snapshotOf(tree.path()), expectation.after());
        return preview;
    }
};

} // namespace

TEST_F(PreviewTest, OfNothingChangesNothing)
{
    const auto preview = changes.preview();
    EXPECT_TRUE(preview.changesNothing());
    EXPECT_TRUE(preview.items.empty());
}

TEST_F(PreviewTest, NewDirectoryGets0770)
{
    changes.makeDirectory("a");
    const auto preview = committed();
    EXPECT_EQ(items(preview), Texts{"done a/"});
    EXPECT_EQ(preview.items[0].mode, 0770U);
    EXPECT_EQ(made(preview), Texts{"+a 0770"});
    EXPECT_FALSE(preview.changesNothing());
}

TEST_F(PreviewTest, NewDirectoriesBelowSetgidParentGet02770AtAnyDepth)
{
    tree.directory("g");
    tree.chmod("g", 02755);
    changes.makeDirectory("g/a");
    changes.makeDirectory("g/a/b");
    EXPECT_EQ(made(committed()), (Texts{"+g/a 2770", "+g/a/b 2770"}));
}

TEST_F(PreviewTest, MissingDirectoriesAboveGetWhatTheMaskLeavesAndTheInheritedBit)
{
    const ScopedMask otherMask(027);
    tree.directory("g");
    tree.chmod("g", 02755);
    tree.directory("x/y");
    changes.makeDirectory("g/a/b/c");
    changes.makeDirectory("x/y/z");
    std::filesystem::remove_all(tree.path("x"));
    const auto preview = committed();
    EXPECT_EQ(made(preview),
              (Texts{"+g/a 2750", "+g/a/b 2750", "+g/a/b/c 2770", "+x 0750", "+x/y 0750", "+x/y/z 0770"}));
}

TEST_F(PreviewTest, DirectoryThatIsThereOnlyGetsItsMode)
{
    changes.makeDirectory("a");
    changes.makeDirectory("b");
    tree.file("a/f");
    tree.directory("b");
    tree.chmod("a", 02755);
    tree.chmod("b", 0770);
    const auto preview = committed();
    EXPECT_EQ(items(preview), (Texts{"nothing a/: it is there", "nothing b/: it is there"}));
    EXPECT_EQ(made(preview), Texts{"a 0770"}) << "the other one has its mode";
}

TEST_F(PreviewTest, NewDirectorySeesTheModeThatItsParentHasJustBeenGiven)
{
    changes.makeDirectory("a");
    changes.makeDirectory("a/b");
    tree.directory("a");
    tree.chmod("a", 02755);
    EXPECT_EQ(made(committed()), (Texts{"a 0770", "+a/b 0770"}));
}

TEST_F(PreviewTest, DirectoryBehindALinkIsNamedThroughTheLink)
{
    tree.directory("d");
    tree.link("l", "d");
    changes.makeDirectory("l/a");
    changes.makeDirectory("l");
    tree.file("d/f");
    changes.removeFile("l/f");
    const auto preview = committed();
    EXPECT_EQ(items(preview), (Texts{"done l/f", "nothing l/: it is there", "done l/a/"}));
    EXPECT_EQ(made(preview), (Texts{"l 0770", "+l/a 0770"}));
    EXPECT_EQ(removed(preview), Texts{"l/f"});
}

TEST_F(PreviewTest, DirectoryBehindALinkThatGoesIsNamedWithoutIt)
{
    tree.directory("d");
    tree.link("t/l", tree.path("d"));
    changes.makeDirectory("t/l/a");
    changes.removeTree("t");
    const auto preview = committed();
    EXPECT_TRUE(preview.items[0].isRemovedAgain);
    EXPECT_EQ(made(preview), Texts{"+d/a 0770"});
}

TEST_F(PreviewTest, RemovedFileIsToldWithItsSize)
{
    tree.file("a", "12345");
    changes.removeFile("a");
    const auto preview = committed();
    EXPECT_EQ(items(preview), Texts{"done a"});
    EXPECT_EQ(preview.items[0].bytes, 5U);
    EXPECT_EQ(preview.removed, (std::vector<Preview::Removed>{{tree.path("a"), EntryKind::File, 5}}));
}

TEST_F(PreviewTest, WhatIsGoneIsNothingToDo)
{
    tree.file("d/a");
    tree.directory("e");
    tree.file("f/x");
    changes.removeFile("d/a");
    changes.removeTree("e");
    changes.removeTree("f/x");
    std::filesystem::remove_all(tree.path("d"));
    std::filesystem::remove_all(tree.path("e"));
    std::filesystem::remove_all(tree.path("f"));
    tree.file("f");
    const auto preview = committed();
    EXPECT_EQ(items(preview),
              (Texts{"nothing d/a: it is gone", "nothing e/: it is gone", "nothing f/x/: it is gone"}));
    EXPECT_TRUE(preview.changesNothing());
}

TEST_F(PreviewTest, RemovedTreeGoesWithAllThatIsInIt)
{
    tree.file("d/a", "123");
    tree.file("d/e/b", "12");
    tree.file("d/e/.filemnodirectorydelete", "");
    tree.directory("d/f/g");
    tree.link("d/l", tree.path("other"));
    tree.file("other/kept");
    mkfifo(tree.path("d/p").c_str(), 0600);
    changes.removeTree("d");
    const auto preview = committed();
    EXPECT_EQ(items(preview), Texts{"done d/"});
    EXPECT_EQ(preview.items[0].contents,
              (zolhost::Contents{3, 3, 1, 1, 5, {tree.path("d/e/.filemnodirectorydelete")}}));
    EXPECT_EQ(removed(preview), (Texts{"d", "d/a", "d/e", "d/e/.filemnodirectorydelete", "d/e/b", "d/f",
                                       "d/f/g", "d/l", "d/p"}));
    EXPECT_EQ(preview.removed[7].kind, EntryKind::Link);
    EXPECT_EQ(preview.removed[8].kind, EntryKind::Other);
    EXPECT_TRUE(tree.exists("other/kept"));
}

TEST_F(PreviewTest, FileThatIsRemovedByItselfDoesNotGoAlong)
{
    tree.file("d/a");
    tree.file("d/b");
    changes.removeFile("d/a");
    changes.removeTree("d");
    const auto preview = committed();
    EXPECT_EQ(preview.items[1].contents.files, 1U);
    EXPECT_EQ(removed(preview), (Texts{"d", "d/a", "d/b"}));
}

TEST_F(PreviewTest, TreeInATreeGoesWithIt)
{
    tree.file("d/e/f");
    changes.removeTree("d");
    changes.removeTree("d/e");
    EXPECT_EQ(items(committed()),
              (Texts{"done d/", "nothing d/e/: it goes with another path of the same commit"}));
}

TEST_F(PreviewTest, DirectoryInTheNameOfAFileGoesWithAllThatIsInIt)
{
    tree.file("p/d/e/f", "123");
    changes.removeFile("p/d");
    const auto preview = committed();
    EXPECT_EQ(preview.items[0].kind, Preview::Item::Kind::RemoveFile);
    EXPECT_EQ(preview.items[0].bytes, 0U);
    EXPECT_EQ(preview.items[0].contents, (zolhost::Contents{1, 1, 0, 0, 3, {}}));
    EXPECT_EQ(removed(preview), (Texts{"p/d", "p/d/e", "p/d/e/f"}));
}

TEST_F(PreviewTest, FileInTheNameOfATreeGoes)
{
    tree.file("p/a", "123");
    tree.directory("b");
    changes.removeFileAsTree("p/a");
    changes.removeTree("b");
    std::filesystem::remove(tree.path("b"));
    tree.file("b", "12");
    const auto preview = committed();
    EXPECT_EQ(preview.items[1].bytes, 3U);
    EXPECT_EQ(removed(preview), (Texts{"b", "p/a"}));
}

TEST_F(PreviewTest, LinkInTheNameOfATreeGoesItself)
{
    tree.file("d/f");
    tree.directory("l");
    changes.removeTree("l");
    std::filesystem::remove(tree.path("l"));
    tree.link("l", "d");
    const auto preview = committed();
    EXPECT_EQ(removed(preview), Texts{"l"});
    EXPECT_TRUE(tree.exists("d/f"));
}

TEST_F(PreviewTest, TreeEndsWhereItTakesAwayTheLinkThatItsPathLeadsThrough)
{
    tree.file("d/e/f");
    tree.link("d/e/l", tree.path());
    changes.removeTree("d/e/l/d");
    const auto preview = committed();
    EXPECT_EQ(items(preview),
              Texts{"fails d/e/l/d/: Directory not empty, in d/e: No such file or directory: the "
                    "path leads through a link that goes too"});
    EXPECT_FALSE(preview.changesNothing());
}

TEST_F(PreviewTest, DirectoryThatIsMadeInARemovedTreeIsNoChange)
{
    tree.file("d/f");
    changes.makeDirectory("d/a/b");
    changes.makeDirectory("d/a/b/c");
    changes.removeTree("d");
    const auto preview = committed();
    EXPECT_EQ(items(preview),
              (Texts{"done d/a/b/: it goes again with another path of the same commit",
                     "done d/a/b/c/: it goes again with another path of the same commit", "done d/"}));
    EXPECT_TRUE(preview.items[0].isRemovedAgain);
    EXPECT_FALSE(preview.items[2].isRemovedAgain);
    EXPECT_EQ(preview.items[2].contents.directories, 0U);
    EXPECT_EQ(made(preview), Texts{});
    EXPECT_EQ(removed(preview), (Texts{"d", "d/f"}));
}

TEST_F(PreviewTest, NewModeInARemovedTreeIsNoChange)
{
    changes.makeDirectory("d/a");
    changes.removeTree("d");
    tree.directory("d/a");
    const auto preview = committed();
    EXPECT_TRUE(preview.items[0].isRemovedAgain);
    EXPECT_EQ(made(preview), Texts{});
    EXPECT_EQ(removed(preview), (Texts{"d", "d/a"}));
}

TEST_F(PreviewTest, DirectoryCanTakeThePlaceOfWhatIsRemovedAsAFile)
{
    tree.file("p/a");
    tree.file("p/b/c/d");
    changes.removeFile("p/a");
    changes.removeFile("p/b");
    changes.makeDirectory("p/a");
    changes.makeDirectory("p/a/x");
    changes.makeDirectory("p/b");
    const auto preview = committed();
    EXPECT_EQ(removed(preview), (Texts{"p/a", "p/b", "p/b/c", "p/b/c/d"}));
    EXPECT_EQ(made(preview), (Texts{"+p/a 0770", "+p/a/x 0770", "+p/b 0770"}));
}

TEST_F(PreviewTest, DirectoryInPlaceOfARemovedFileCanGoWithATree)
{
    tree.file("t/d/f");
    changes.removeFile("t/d");
    changes.makeDirectory("t/d/e");
    changes.removeTree("t");
    const auto preview = committed();
    EXPECT_EQ(removed(preview), (Texts{"t", "t/d", "t/d/f"}));
    EXPECT_EQ(made(preview), Texts{});
}

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

TEST_F(PreviewTest, WhatCancelledOutIsTold)
{
    changes.makeDirectory("a");
    changes.removeDirectory("a");
    const auto preview = committed();
    EXPECT_TRUE(preview.changesNothing());
    EXPECT_EQ(preview.cancelled,
              (std::vector<Plan::Cancelled>{{tree.path("a/"), Plan::Cancelled::How::MadeThenRemoved}}));
}

TEST_F(PreviewTest, TellsItsProgressAndCanBeEndedByIt)
{
    for (int i = 0; i < 600; ++i)
    {
        tree.file("d/" + std::to_string(i));
    }
    changes.removeTree("d");
    std::vector<std::size_t> calls;
    previewOf(changes.plan(), [&](std::size_t done) { calls.push_back(done); });
    EXPECT_EQ(calls, (std::vector<std::size_t>{256, 512}));
    EXPECT_THROW(previewOf(changes.plan(), [](std::size_t) { throw std::runtime_error("enough"); }),
                 std::runtime_error);
}
