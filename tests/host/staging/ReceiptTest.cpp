#include "staging/Receipt.h"

#include "FileFlag.h"
#include "StagingTest.h"

#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

using zolhost::Preview;
using zolhost::Receipt;
using zoltest::FileFlag;
using Texts = std::vector<std::string>;

namespace
{

namespace fs = std::filesystem;

class ReceiptTest : public zoltest::StagingTest
{
protected:
    /// "result name: why", names relative to the tree.
    Texts items(const Receipt& receipt) const
    {
        const std::vector<std::string> results = {"done", "was so", "remains"};
        Texts texts;
        for (const auto& item : receipt.items)
        {
            texts.push_back(results[static_cast<std::size_t>(item.result)] + " " + relative(item.path) +
                            (item.why.empty() ? "" : ": ") + relative(item.why));
        }
        return texts;
    }

    /// What a commit leaves, if this is done to the disk right after it and that right before it, unseen.
    template<typename After, typename Before>
    Receipt committed(const After& after, const Before& rightBefore)
    {
        const Preview preview = changes.preview();
        const Receipt::Before before(preview);
        rightBefore();
        changes.commit();
        after();
        return receiptOf(preview, before);
    }
    template<typename After>
    Receipt committed(const After& after)
    {
        return committed(after, [] {});
    }
    Receipt committed()
    {
        return committed([] {}, [] {});
    }
};

} // namespace

TEST_F(ReceiptTest, TellsAllThatWasDoneWithTotals)
{
    tree.file("d/a", "123");
    tree.file("d/e/b", "12");
    tree.link("d/l", "nowhere");
    tree.directory("x/y");
    tree.file("f", "1");
    changes.removeFile("f");
    changes.makeDirectory("g");
    changes.makeDirectory("h");
    changes.removeTree("d");
    changes.removeDirectory("x");
    const auto receipt = committed();
    EXPECT_EQ(items(receipt), (Texts{"done f", "done g/", "done h/", "done d/", "done x/"}));
    EXPECT_TRUE(receipt.isComplete());
    EXPECT_EQ(receipt.items[1].mode, 0770U);
    EXPECT_EQ(receipt.directoriesMade, 2U);
    EXPECT_EQ(receipt.directoriesRemoved, 4U);
    EXPECT_EQ(receipt.filesRemoved, 3U);
    EXPECT_EQ(receipt.othersRemoved, 1U);
    EXPECT_EQ(receipt.bytesRemoved, 6U);
}

TEST_F(ReceiptTest, TellsWhatWasSo)
{
    tree.file("f");
    tree.directory("t");
    changes.removeFile("f");
    changes.removeTree("t");
    changes.makeDirectory("d");
    fs::remove(tree.path("f"));
    fs::remove(tree.path("t"));
    tree.directory("d");
    const auto receipt = committed();
    EXPECT_EQ(items(receipt), (Texts{"was so f", "was so d/", "was so t/"}));
    EXPECT_TRUE(receipt.isComplete());
    EXPECT_EQ(receipt.items[1].mode, 0770U);
    EXPECT_EQ(receipt.directoriesMade + receipt.directoriesRemoved + receipt.filesRemoved, 0U);
}

TEST_F(ReceiptTest, DirectoryThatWentAgainIsDone)
{
    tree.directory("t/old");
    changes.makeDirectory("t/new");
    changes.removeTree("t");
    EXPECT_EQ(items(committed()), (Texts{"done t/new/", "done t/"}));
}

TEST_F(ReceiptTest, DirectoryInPlaceOfARemovedFileIsDone)
{
    tree.file("f", "123");
    changes.removeFile("f");
    changes.makeDirectory("f");
    const auto receipt = committed();
    EXPECT_EQ(items(receipt), (Texts{"done f", "done f/"}));
    EXPECT_EQ(receipt.filesRemoved, 1U);
    EXPECT_EQ(receipt.bytesRemoved, 3U);
    EXPECT_EQ(receipt.directoriesMade, 1U);
}

TEST_F(ReceiptTest, ImmutableFileRemainsAndOnlyWhatWentIsCounted)
{
    tree.file("d/f", "123");
    tree.file("g", "12");
    tree.file("h", "1");
    changes.removeTree("d");
    changes.removeFile("g");
    changes.removeFile("h");
    const FileFlag first(tree.path("d/f"), FS_IMMUTABLE_FL);
    FileFlag second(tree.path("g"), FS_IMMUTABLE_FL);
    if (!first.isSet() || !second.isSet())
    {
        GTEST_SKIP() << "no file can be made immutable here";
    }
    const auto receipt = committed();
    EXPECT_EQ(
        items(receipt),
        (Texts{"remains g: Operation not permitted: the file is immutable", "done h",
               "remains d/: Directory not empty, in d/f: Operation not permitted: the file is immutable"}));
    EXPECT_FALSE(receipt.isComplete());
    EXPECT_EQ(receipt.filesRemoved, 1U);
    EXPECT_EQ(receipt.bytesRemoved, 1U);
}

TEST_F(ReceiptTest, WhatRemainsWithoutAnObstacleSaysSo)
{
    tree.file("g", "12");
    changes.removeFile("g");
    FileFlag flag(tree.path("g"), FS_IMMUTABLE_FL);
    if (!flag.isSet())
    {
        GTEST_SKIP() << "no file can be made immutable here";
    }
    EXPECT_EQ(items(committed([&] { flag.takeAway(); })), Texts{"remains g: nothing is in the way now"});
}

TEST_F(ReceiptTest, WhatCameBackRemains)
{
    tree.file("f");
    tree.directory("t");
    tree.directory("u");
    changes.removeFile("f");
    changes.removeTree("t");
    changes.removeTree("u");
    fs::remove(tree.path("u"));
    // while they are open, nothing else gets their numbers
    const int file = open(tree.path("f").c_str(), O_RDONLY | O_CLOEXEC);
    const int directory = open(tree.path("t").c_str(), O_RDONLY | O_CLOEXEC);
    const auto receipt = committed([&] {
        tree.directory("u");
        tree.directory("t");
        tree.file("f");
    });
    EXPECT_EQ(items(receipt), (Texts{"remains f: a new one of this name is there",
                                     "remains t/: a new one of this name is there",
                                     "remains u/: a new one of this name is there"}));
    close(file);
    close(directory);
}

TEST_F(ReceiptTest, OtherModeRemains)
{
    changes.makeDirectory("d");
    changes.makeDirectory("e");
    const auto receipt = committed([&] { tree.chmod("d", 0755); });
    EXPECT_EQ(items(receipt), (Texts{"remains d/: its mode is 0755 in place of 0770", "done e/"}));
    EXPECT_EQ(receipt.items[0].mode, 0755U);
    EXPECT_EQ(receipt.directoriesMade, 2U);
}

TEST_F(ReceiptTest, ModeThatCouldNotBeSetRemainsWithTheReason)
{
    changes.makeDirectory("d");
    tree.directory("d");
    const FileFlag flag(tree.path("d"), FS_IMMUTABLE_FL);
    if (!flag.isSet())
    {
        GTEST_SKIP() << "no directory can be made immutable here";
    }
    EXPECT_EQ(items(committed()),
              Texts{"remains d/: its mode is 0755 in place of 0770: Operation not permitted: "
                    "the directory is immutable"});
}

TEST_F(ReceiptTest, DirectoryThatIsMissingOrSomethingElseRemains)
{
    changes.makeDirectory("d");
    changes.makeDirectory("e");
    tree.file("e");
    EXPECT_EQ(items(committed([&] { fs::remove(tree.path("d")); })),
              (Texts{"remains d/: nothing is in the way now",
                     "remains e/: Not a directory: something else of this name is there"}));
}

TEST_F(ReceiptTest, WhatComesAfterTheEndOfTheCommitRemains)
{
    tree.file("y");
    tree.directory("t");
    changes.removeFile("y");
    changes.makeDirectory("a");
    changes.makeDirectory("f/b");
    changes.makeDirectory("g");
    changes.makeDirectory("h");
    changes.removeTree("t");
    tree.file("f");
    tree.directory("h");
    const Texts expected = {"done y",
                            "done a/",
                            "remains f/b/: Not a directory: f",
                            "remains g/: the commit ended at f/b",
                            "remains h/: the commit ended at f/b",
                            "remains t/: the commit ended at f/b"};
    const auto receipt = committed();
    EXPECT_EQ(items(receipt), expected);
    EXPECT_EQ(receipt.directoriesMade, 1U);
    EXPECT_EQ(receipt.directoriesRemoved, 0U);
}

TEST_F(ReceiptTest, EndThatNobodyForesawIsTold)
{
    tree.directory("t");
    changes.makeDirectory("f/b");
    changes.makeDirectory("g");
    changes.removeTree("t");
    EXPECT_EQ(items(committed([] {}, [&] { tree.file("f"); })),
              (Texts{"remains f/b/: Not a directory: f", "remains g/: the commit ended at f/b",
                     "remains t/: the commit ended at f/b"}));
}

TEST_F(ReceiptTest, EndThatDidNotComeIsNotTold)
{
    tree.directory("t");
    tree.file("f");
    changes.makeDirectory("f/b");
    changes.makeDirectory("g");
    changes.removeTree("t");
    EXPECT_EQ(items(committed([] {}, [&] { fs::remove(tree.path("f")); })).back(), "done t/");
}

TEST_F(ReceiptTest, DirectoryBehindALinkIsDone)
{
    tree.directory("d");
    tree.link("l", "d");
    changes.makeDirectory("l/a");
    changes.makeDirectory("l");
    EXPECT_EQ(items(committed()), (Texts{"was so l/", "done l/a/"}));
}

TEST_F(ReceiptTest, TreeThatTookAwayTheLinkOnItsWayIsDone)
{
    tree.file("d/e/f");
    tree.link("d/e/l", tree.path());
    changes.removeTree("d/e/l/d");
    EXPECT_TRUE(committed().isComplete());
    EXPECT_FALSE(tree.exists("d"));
}

TEST_F(ReceiptTest, WhatCannotBeSeenRemains)
{
    EXPECT_TRUE(zoltest::holdsForOrdinaryUser(tree, [&] {
        tree.file("d/f");
        changes.removeFile("d/f");
        tree.chmod("d", 0600);
        const auto receipt = committed();
        tree.chmod("d", 0700);
        EXPECT_EQ(items(receipt), Texts{"remains d/f: Permission denied"});
        EXPECT_EQ(receipt.filesRemoved, 0U);
    }));
}

TEST_F(ReceiptTest, OfAnotherUsersDirectoryNamesTheReason)
{
    if (geteuid() != 0)
    {
        GTEST_SKIP() << "only root can give directories away";
    }
    tree.directory("d");
    EXPECT_TRUE(zoltest::holdsForOrdinaryUser(tree, [&] {
        changes.makeDirectory("d");
        EXPECT_EQ(items(committed()), Texts{"remains d/: its mode is 0755 in place of 0770: Operation not "
                                            "permitted: the directory belongs to another user"});
    }));
}

TEST_F(ReceiptTest, TellsItsProgressAndCanBeEndedByIt)
{
    for (int i = 0; i < 300; ++i)
    {
        tree.file("d/" + std::to_string(i));
    }
    changes.removeTree("d");
    const Preview preview = changes.preview();
    const Receipt::Before before(preview);
    changes.commit();
    std::vector<std::size_t> calls;
    receiptOf(preview, before, [&](std::size_t done) { calls.push_back(done); });
    EXPECT_EQ(calls, std::vector<std::size_t>{256});
    EXPECT_THROW(receiptOf(preview, before, [](std::size_t) { throw std::runtime_error("enough"); }),
                 std::runtime_error);
}
