#include "staging/Preview.h"

#include "PreviewFixture.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>

using zolhost::EntryKind;
using zolhost::Plan;
using zolhost::Preview;
using zoltest::ScopedMask;

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

TEST_F(PreviewTest, TreeGoesWholeWithTheLinkThatItsPathLeadsThrough)
{
    tree.file("d/e/f");
    tree.link("d/e/l", tree.path());
    changes.removeTree("d/e/l/d");
    const auto preview = committed();
    EXPECT_EQ(items(preview), Texts{"done d/e/l/d/"});
    EXPECT_EQ(removed(preview), (Texts{"d/e/l/d", "d/e/l/d/e", "d/e/l/d/e/f", "d/e/l/d/e/l"}));
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
