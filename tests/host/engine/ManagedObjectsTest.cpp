#include "engine/ManagedObjects.h"

#include "engine/ConfigurationText.h"
#include "engine/Host.h"
#include "engine/Refusal.h"
#include "engine/ThreadContext.h"
#include "support/LoadedLibrary.h"
#include "support/TemporaryTree.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

using namespace zolhost;
using zoltest::LoadedLibrary;
using zoltest::TemporaryTree;

namespace
{

using Names = std::vector<std::string>;

const std::string root = "ManagedElement=1,SystemFunctions=1,FileM=1";

std::string whyRefused(const std::function<void()>& operation)
{
    try
    {
        operation();
        return "done";
    }
    catch (const Refusal& refusal)
    {
        return refusal.dn().substr(root.size()) + ": " + refusal.what();
    }
}

class ManagedObjectsTest : public testing::Test
{
protected:
    ManagedObjectsTest()
        : host({LoadedLibrary::path(), configurationFor(tree.path()), {}})
        , transaction(host.begin())
        , objects(host.objects(*transaction))
    {}

    TemporaryTree tree;
    Host host;
    std::unique_ptr<Transaction> transaction;
    ManagedObjects objects;
};

} // namespace

TEST_F(ManagedObjectsTest, AreListedAndCounted)
{
    tree.file("d/a");
    tree.file("d/b");
    tree.directory("d/e");
    auto files = objects.children(root + ",FileGroup=d", "FileInformation");
    std::ranges::sort(files);
    EXPECT_EQ(files, (Names{"a", "b"}));
    EXPECT_EQ(objects.children(root, "FileMConfigData"), Names{"1"});
    EXPECT_EQ(objects.countChildren(root + ",FileGroup=d", "FileInformation"), 2U);
    EXPECT_EQ(objects.countChildren(root + ",FileGroup=d", "FileGroup"), 1U);
    EXPECT_TRUE(objects.exists(root + ",FileGroup=d"));
    EXPECT_FALSE(objects.exists(root + ",FileGroup=e"));
}

TEST_F(ManagedObjectsTest, AreChangedAtTheCommit)
{
    tree.file("d/a.log");
    tree.file("d/a.txt");
    tree.file("d/b.log");
    tree.file("e/f");
    objects.create(root, "FileGroup", "fileGroupId", "new");
    EXPECT_TRUE(objects.removeFile(root + ",FileGroup=d", ".*\\.log"));
    EXPECT_FALSE(objects.removeFile(root + ",FileGroup=d", ".*\\.log")) << "they are gone already";
    EXPECT_TRUE(objects.remove(root + ",FileGroup=e"));
    objects.deleteObject(root + ",FileGroup=d,FileInformation=a.txt");
    transaction->commit();
    EXPECT_EQ(tree.listing(), (Names{"d d", "d new"}));
}

TEST_F(ManagedObjectsTest, AreRefusedWithTheMessageOrTheMeaningOfTheCode)
{
    tree.file("d/.filemnodirectorycreate");
    tree.file("d/f");
    tree.link("l", tree.path("d"));
    EXPECT_EQ(whyRefused([&] { objects.create(root + ",FileGroup=d", "FileGroup", "fileGroupId", "x"); }),
              ",FileGroup=d,FileGroup=x: FileGroup does not allow child FileGroup to be created");
    EXPECT_EQ(whyRefused([&] { objects.create(root, "FileInformation", "fileInformationId", "x"); }),
              ",FileInformation=x: no such object can be created there");
    EXPECT_EQ(whyRefused([&] { objects.deleteObject(root + ",FileGroup=d"); }),
              ",FileGroup=d: FileGroup is not allowed to be deleted");
    EXPECT_EQ(whyRefused([&] { objects.deleteObject(root + ",FileGroup=x"); }),
              ",FileGroup=x: no such object");
    EXPECT_EQ(whyRefused([&] { objects.deleteObject(root + ",FileGroup=l"); }),
              ",FileGroup=l: it is a symbolic link, or there are files in it or below");
    EXPECT_EQ(whyRefused([&] { objects.remove(root + ",FileGroup=l"); }),
              ",FileGroup=l: it is a symbolic link");
    EXPECT_EQ(whyRefused([&] { objects.removeFile(root + ",FileGroup=d", "("); }),
              ",FileGroup=d: Invalid regular expression");
    EXPECT_EQ(whyRefused([&] { objects.attribute(root + ",FileGroup=d", "size"); }),
              ",FileGroup=d: no such object");
    EXPECT_EQ(whyRefused([&] { objects.attribute(root + ",FileGroup=x", "files"); }),
              ",FileGroup=x: the directory can't be read, or a link in it leads nowhere");
    EXPECT_EQ(whyRefused([&] { objects.children(root, "FileGroupPolicy"); }),
              ": there are no children of this class");
    EXPECT_EQ(ThreadContext::take(), Names{}) << "each message went with its refusal";
}

TEST_F(ManagedObjectsTest, AreRefusedAfterTheTransaction)
{
    transaction->commit();
    EXPECT_EQ(whyRefused([&] { objects.exists(root); }), ": the transaction isn't known");
    EXPECT_EQ(whyRefused([&] { objects.countChildren(root, "FileGroup"); }), ": the transaction isn't known");
    EXPECT_EQ(whyRefused([&] { objects.children(root, "FileGroup"); }), ": the transaction isn't known");
}
