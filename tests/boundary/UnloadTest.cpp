#include "support/DistinguishedNames.h"
#include "support/FakeHost.h"
#include "support/FakeRepository.h"
#include "support/FakeZolea.h"
#include "support/LoadedComponent.h"
#include "support/LoadedLibrary.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

using zoltest::configurationFor;
using zoltest::FakeHost;
using zoltest::FakeRepository;
using zoltest::FakeZolea;
using zoltest::fileGroup;
using zoltest::fileM;
using zoltest::LoadedComponent;
using zoltest::LoadedLibrary;
using zoltest::RecordedLog;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

} // namespace

TEST(Unload, LeavesNothingOfALibraryThatWasNeverCalled)
{
    LoadedLibrary library;
    ASSERT_TRUE(LoadedLibrary::isStillLoaded());
    library.unload();
    EXPECT_FALSE(LoadedLibrary::isStillLoaded());
}

TEST(Unload, LeavesNothingOfAComponentThatHasWorked)
{
    const TemporaryTree tree;
    tree.file("logs/a.txt");
    const FakeRepository repository;
    const FakeZolea zolea("echo " + tree.path());
    LoadedComponent component(tree.path());
    {
        const auto tx = component.join();
        EXPECT_EQ(tx->children(fileM, "FileGroup"), Texts{"logs"});
        EXPECT_EQ(tx->children(fileM, "FileMConfigData"), Texts{"1"});
        EXPECT_EQ(tx->attribute(fileGroup("logs"), "reservedByPolicy"), "reference[]");
        EXPECT_EQ(tx->attribute(zoltest::fileMConfigData, "internalRoot"), "string[\"" + tree.path() + "\"]");
        EXPECT_EQ(tx->attributes(fileGroup("logs"), {"fileGroupId", "files"}).size(), 2U);
        EXPECT_EQ(tx->removeFile(fileGroup("logs"), "a.*"), "bool[true]");
        EXPECT_EQ(tx->create(fileM, ".."), -1);
        EXPECT_EQ(tx->create(fileM, "new"), 0);
        EXPECT_EQ(tx->commit(), 0);
    }
    component.unload();
    EXPECT_FALSE(LoadedLibrary::isStillLoaded());
}

TEST(Unload, WithoutStopAndTerminateLeavesNothingEither)
{
    FakeHost host;
    LoadedLibrary library;
    ASSERT_EQ(library.init(host.accessor(), configurationFor("/")), 0);
    ASSERT_EQ(host.record()->start(ZolStateChangeReasonNormal), 0);
    host.clear();
    library.unload();
    EXPECT_FALSE(LoadedLibrary::isStillLoaded());
    EXPECT_EQ(host.calls(), Texts{}) << "the component does not unregister by itself";
}

TEST(Unload, DeletesTheOpenTransactionsAndCommitsNothing)
{
    const TemporaryTree tree;
    tree.directory("a");
    LoadedComponent component(tree.path());
    const auto& resource = component.resource();
    const auto& objects = component.objects();
    for (const unsigned long handle : {7UL, 8UL})
    {
        ASSERT_EQ(resource.join(handle), 0);
        ASSERT_EQ(objects.createMo(handle, fileM.c_str(), "FileGroup", "fileGroupId", "new", nullptr), 0);
        ASSERT_EQ(objects.deleteMo(handle, fileGroup("a").c_str()), 0);
        unsigned long long iterator = 0;
        ASSERT_EQ(objects.newMoIterator(handle, fileM.c_str(), "FileGroup", &iterator), 0);
    }
    // an iterator of an open transaction holds its directory open
    ASSERT_EQ(tree.openDescriptors(), 2);

    component.unload();

    EXPECT_EQ(tree.openDescriptors(), 0);
    EXPECT_EQ(tree.listing(), Texts{"d a"});
    EXPECT_FALSE(LoadedLibrary::isStillLoaded());
}

TEST(Unload, IsFollowedByAFreshStartOfTheIteratorIds)
{
    const TemporaryTree tree;
    for (int load = 1; load <= 2; ++load)
    {
        LoadedComponent component(tree.path());
        const auto tx = component.join();
        EXPECT_EQ(tx->newIterator(fileM, "FileGroup"), 1U) << "load " << load;
        EXPECT_EQ(tx->newIterator(fileM, "FileMConfigData"), 2U) << "load " << load;
    }
}

TEST(Unload, IsFollowedByANewQuestionForTheRootObject)
{
    const TemporaryTree tree;
    FakeRepository repository;
    for (const std::string root : {"Node=1,FileM=1", "Node=2,FileM=1"})
    {
        repository.firstInstance = root;
        repository.setChildren(root, "FileGroupPolicy", {root + ",FileGroupPolicy=p"});
        repository.setReferences(root + ",FileGroupPolicy=p", "fileGroup", {fileGroup("a")});
        LoadedComponent component(tree.path());
        const auto tx = component.join();
        EXPECT_EQ(tx->attribute(fileGroup("a"), "reservedByPolicy"),
                  "reference[\"" + root + ",FileGroupPolicy=p\"]");
    }
}

TEST(Unload, IsFollowedByAComponentThatKnowsNoTransactionOfBefore)
{
    const TemporaryTree tree;
    {
        LoadedComponent component(tree.path());
        ASSERT_EQ(component.resource().join(7), 0);
    }
    LoadedComponent component(tree.path());
    EXPECT_EQ(component.resource().finish(7), -2);
}

TEST(Unload, IsFollowedByAComponentThatIsNotStartedAndHasNoInternalRoot)
{
    const TemporaryTree tree;
    {
        const LoadedComponent component(tree.path());
    }
    FakeHost host;
    const LoadedLibrary library;
    const FakeZolea zolea("echo /nowhere");
    ASSERT_EQ(library.init(host.accessor(), configurationFor("")), 0);
    {
        const RecordedLog log(4);
        EXPECT_EQ(host.record()->stop(ZolStateChangeReasonNormal), 0);
        EXPECT_EQ(log.statements(), Texts{"severity-4 FileManagement service is already stopped."});
    }
    EXPECT_EQ(host.record()->start(ZolStateChangeReasonNormal), -1);
    EXPECT_EQ(zolea.runs(), Texts{"file-system internalRoot"});
}
