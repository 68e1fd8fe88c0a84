#include "ChangesFixture.h"

#include <type_traits>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;
using ZolFileManagement::FileMTransaction;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::RecordedLog;
using zoltest::Texts;

namespace
{

class TransactionLife : public zoltest::Changes
{
protected:
    using Lookup = decltype(ZolMgmtSpiInterfacePortal_1::getInterface);

    // The host's portal, but for its answer to a lookup.
    ZolMgmtSpiInterfacePortal_1 portalWith(Lookup lookup)
    {
        ZolMgmtSpiInterfacePortal_1 portal = *host.portal1();
        portal.getInterface = lookup;
        return portal;
    }

    static ZolReturnT createIn(FileMTransaction& transaction, const char* name)
    {
        return transaction.create(fileM.c_str(), "FileGroup", "fileGroupId", name);
    }
};

static_assert(std::has_virtual_destructor_v<FileMTransaction>);
static_assert(!std::is_copy_constructible_v<FileMTransaction>);
static_assert(noexcept(std::declval<FileMTransaction&>().finish()));
static_assert(noexcept(std::declval<FileMTransaction&>().commit()));
static_assert(noexcept(std::declval<FileMTransaction&>().abort()));
static_assert(noexcept(std::declval<FileMTransaction&>().create("", "", "", "")));
static_assert(noexcept(std::declval<FileMTransaction&>().deleteM("")));
static_assert(noexcept(
    std::declval<FileMTransaction&>().action("", "", nullptr, std::declval<QenMoAttributeValueResult_3&>())));
static_assert(noexcept(std::declval<FileMTransaction&>().newIterator("", "", nullptr)));
static_assert(noexcept(std::declval<FileMTransaction&>().next(0, nullptr)));
static_assert(noexcept(
    std::declval<FileMTransaction&>().getAttribute("", "", std::declval<QenMoAttributeValueResult_3&>())));
static_assert(noexcept(std::declval<FileMTransaction&>().getAttributes(
    "", nullptr, std::declval<QenMoAttributeValuesResult_3&>())));
static_assert(!noexcept(std::declval<FileMTransaction&>().countMoChildren("", "", nullptr)));
static_assert(!noexcept(std::declval<FileMTransaction&>().existsMo("")));
static_assert(!noexcept(std::declval<FileMTransaction&>().isDirContainingFiles(Poco::Path())));

} // namespace

TEST_F(TransactionLife, InitializeTracesTheRoot)
{
    const RecordedLog log;
    FileMTransaction::initialize("/some/where");
    EXPECT_THAT(log.statements(), ElementsAre("enter  >> fileSystemRoot :/some/where"));
}

TEST_F(TransactionLife, TheRootIsOneForAllTransactions)
{
    FileMTransaction other(8, *host.portal1());
    FileMTransaction::initialize(tree.directory("elsewhere"));
    ASSERT_EQ(createIn(worker, "a"), 0);
    ASSERT_EQ(createIn(other, "b"), 0);
    ASSERT_EQ(worker.commit(), 0);
    ASSERT_EQ(other.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d elsewhere", "d elsewhere/a", "d elsewhere/b"));
}

TEST_F(TransactionLife, AsksTheHostOnceForTheThreadContext)
{
    host.clear();
    const RecordedLog log;
    const FileMTransaction transaction(8, *host.portal1());
    EXPECT_THAT(host.calls(),
                ElementsAre("getInterface ZolMgmtSpiThreadContextService/ZolMgmtSpiThreadContext/2"));
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(TransactionLife, WithoutAThreadContextOnlyTheMessagesAreLost)
{
    host.refusedInterfaces = {"ZolMgmtSpiThreadContext"};
    const RecordedLog log;
    FileMTransaction transaction(8, *host.portal1());
    EXPECT_THAT(log.statements(), ElementsAre("severity-3 Could not get threadContext service"));

    EXPECT_EQ(createIn(transaction, ".."), -1);
    EXPECT_EQ(createIn(transaction, "a"), 0);
    EXPECT_EQ(transaction.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a"));
    EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(TransactionLife, AnyCodeButZeroIsAFailedLookup)
{
    auto portal = portalWith([](ZolMgmtSpiInterface_1, ZolMgmtSpiInterface_1**) -> ZolReturnT { return 5; });
    const RecordedLog log;
    const FileMTransaction transaction(8, portal);
    EXPECT_THAT(log.statements(), ElementsAre("severity-3 Could not get threadContext service"));
}

TEST_F(TransactionLife, WhatAFailedLookupGivesIsNotUsed)
{
    static ZolMgmtSpiThreadContext* const context = host.threadContext();
    auto portal = portalWith([](ZolMgmtSpiInterface_1, ZolMgmtSpiInterface_1** result) -> ZolReturnT {
        *result = reinterpret_cast<ZolMgmtSpiInterface_1*>(context);
        return 5;
    });
    FileMTransaction transaction(8, portal);
    EXPECT_EQ(createIn(transaction, "illegal|name"), -1);
    EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(TransactionLife, TheThreadContextIsNullUntilTheLookupFillsIt)
{
    static const ZolMgmtSpiInterface_1* found = nullptr;
    auto portal = portalWith([](ZolMgmtSpiInterface_1, ZolMgmtSpiInterface_1** result) -> ZolReturnT {
        found = *result;
        return 0;
    });
    found = reinterpret_cast<const ZolMgmtSpiInterface_1*>(host.threadContext());
    const RecordedLog log;
    const FileMTransaction transaction(8, portal);
    EXPECT_EQ(found, nullptr);
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(TransactionLife, NothingWaitsInANewTransaction)
{
    tree.file("d/f");
    const Texts before = tree.listing();
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(TransactionLife, NothingChangesOnDiskBeforeCommit)
{
    tree.file("d/f");
    tree.file("d/g");
    tree.directory("empty");
    tree.file("e/x");
    const Texts before = tree.listing();

    EXPECT_EQ(create("new"), 0);
    EXPECT_EQ(deleteM(fileGroup("empty")), 0);
    EXPECT_EQ(deleteM(fileInformation("f", fileGroup("d"))), 0);
    EXPECT_EQ(removeFile(fileGroup("d"), "g"), "0 bool[true]");
    EXPECT_EQ(remove(fileGroup("e")), "0 bool[true]");
    EXPECT_EQ(tree.listing(), before);

    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d", "d new"));
}

TEST_F(TransactionLife, ChangesOfOneTransactionAreNotAnothers)
{
    FileMTransaction other(8, *host.portal1());
    ASSERT_EQ(create("a"), 0);
    EXPECT_EQ(other.commit(), 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST_F(TransactionLife, FinishOfAnUnusedTransactionGivesZeroEachTime)
{
    const RecordedLog log;
    EXPECT_EQ(worker.finish(), 0);
    EXPECT_EQ(worker.finish(), 0);
    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(TransactionLife, FinishFreesIteratorsAndNames)
{
    tree.directory("a");
    tree.directory("b");
    unsigned long long iterator = 0;
    char* name = nullptr;
    ASSERT_EQ(worker.newIterator(fileM.c_str(), "FileGroup", &iterator), 0);
    ASSERT_EQ(worker.next(iterator, &name), 0);
    ASSERT_STRNE(name, nullptr);
    ASSERT_EQ(tree.openDescriptors(), 1); // the iterator's place in the directory

    EXPECT_EQ(worker.finish(), 0);
    EXPECT_EQ(tree.openDescriptors(), 0);
    EXPECT_EQ(worker.finish(), 0);
}

TEST_F(TransactionLife, FinishLeavesWhatWaitsAsItIs)
{
    ASSERT_EQ(create("a"), 0);
    EXPECT_EQ(worker.finish(), 0);
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d a"));
}

TEST_F(TransactionLife, WhatWaitsVanishesUnappliedAtTheEnd)
{
    tree.file("d/f");
    const Texts before = tree.listing();
    {
        FileMTransaction transaction(8, *host.portal1());
        ASSERT_EQ(createIn(transaction, "a"), 0);
        ASSERT_EQ(transaction.deleteM(fileInformation("f", fileGroup("d")).c_str()), 0);
        const RecordedLog log;
        EXPECT_EQ(transaction.finish(), 0);
        EXPECT_THAT(log.statements(), IsEmpty());
    }
    EXPECT_EQ(tree.listing(), before);
}

TEST_F(TransactionLife, ItsEndFreesIteratorsAlsoWithoutFinish)
{
    tree.directory("a");
    {
        FileMTransaction transaction(8, *host.portal1());
        unsigned long long iterator = 0;
        ASSERT_EQ(transaction.newIterator(fileM.c_str(), "FileGroup", &iterator), 0);
        ASSERT_EQ(tree.openDescriptors(), 1);
    }
    EXPECT_EQ(tree.openDescriptors(), 0);
}
