#include "support/DistinguishedNames.h"
#include "support/LoadedComponent.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::LoadedComponent;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

Texts sorted(Texts texts)
{
    std::sort(texts.begin(), texts.end());
    return texts;
}

} // namespace

TEST(Operator, BrowsesReadsCreatesDeletesAndCommits)
{
    const TemporaryTree tree;
    tree.file("logs/app+1.log", "twelve bytes");
    tree.file("logs/app+2.log", "x");
    tree.file("logs/keep.txt", "y");
    tree.file("logs/kept/.filemnohousekeeping");
    tree.directory("logs/old");
    tree.file("fixed/.filemnodirectorycreate");
    tree.directory("spare");
    tree.chmod("spare", 02775);
    LoadedComponent component(tree.path());
    const auto tx = component.join();

    EXPECT_EQ(tx->children(fileM, "FileMConfigData"), Texts{"1"});
    EXPECT_EQ(sorted(tx->children(fileM, "FileGroup")), (Texts{"fixed", "logs", "spare"}));
    const std::string logs = fileGroup("logs");
    EXPECT_EQ(sorted(tx->children(logs, "FileGroup")), (Texts{"kept", "old"}));
    EXPECT_EQ(tx->count(logs, "FileInformation"), 3U);
    EXPECT_EQ(tx->count(fileGroup("kept", logs), "FileInformation"), 0U) << "markers are hidden";
    EXPECT_EQ(tx->attributes(fileInformation("keep.txt", logs), {"size", "type", "open"}),
              (Texts{"int[1]", "string[\"txt\"]", "bool[false]"}));
    EXPECT_EQ(tx->attribute(fileGroup("kept", logs), "internalHousekeeping"), "bool[true]");

    EXPECT_EQ(tx->create(fileGroup("spare"), "new"), 0);
    EXPECT_EQ(tx->create(fileGroup("new", fileGroup("spare")), "newer"), 0);
    EXPECT_EQ(tx->create(fileGroup("fixed"), "no"), -1);
    EXPECT_EQ(tx->deleteMo(logs), -1) << "it holds files";
    EXPECT_EQ(tx->deleteMo(fileGroup("old", logs)), 0);
    EXPECT_EQ(tx->deleteMo(fileGroup("kept", logs)), -1);
    EXPECT_EQ(tx->deleteMo(fileInformation("keep.txt", logs)), 0);
    EXPECT_EQ(tx->removeFile(logs, "app.*\\.log"), "bool[true]");
    EXPECT_EQ(component.host.messages(), (Texts{"FileGroup does not allow child FileGroup to be created",
                                                "FileGroup is not allowed to be deleted"}));

    EXPECT_EQ(tx->children(fileGroup("spare"), "FileGroup"), Texts{"new"});
    EXPECT_EQ(tx->children(logs, "FileInformation"), Texts{});
    EXPECT_TRUE(tree.exists("logs/keep.txt")) << "nothing happens before the commit";

    EXPECT_EQ(tx->prepare(), 0);
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tx->finish(), 0);

    EXPECT_EQ(tree.listing(),
              (Texts{"d fixed", "d logs", "d logs/kept", "d spare", "d spare/new", "d spare/new/newer",
                     "f fixed/.filemnodirectorycreate 1", "f logs/kept/.filemnohousekeeping 1"}));
    EXPECT_EQ(tree.mode("spare/new"), 02770U);
    EXPECT_EQ(tree.mode("spare/new/newer"), 02770U);
}

TEST(Operator, AbortsAndFindsTheTreeUntouched)
{
    const TemporaryTree tree;
    tree.file("logs/a.txt");
    tree.directory("empty");
    const Texts before = tree.listing();
    LoadedComponent component(tree.path());
    const auto tx = component.join();

    EXPECT_EQ(tx->create(fileM, "new"), 0);
    EXPECT_EQ(tx->deleteMo(fileGroup("empty")), 0);
    EXPECT_EQ(tx->removeFile(fileGroup("logs"), ".*"), "bool[true]");
    EXPECT_EQ(tx->remove(fileGroup("logs")), "bool[true]");
    EXPECT_EQ(tx->prepare(), 0);
    EXPECT_EQ(tx->abort(), 0);

    EXPECT_EQ(tree.listing(), before);
    EXPECT_EQ(sorted(tx->children(fileM, "FileGroup")), (Texts{"empty", "logs"}));
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tree.listing(), before);
}
