#include "FileMMoImpl.h"

#include "support/DistinguishedNames.h"
#include "support/FakeHost.h"
#include "support/ObservedThread.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using ZolFileManagement::FileMMoImpl;
using zoltest::FakeHost;
using zoltest::fileGroup;
using zoltest::fileM;
using zoltest::ObservedThread;
using zoltest::RecordedLog;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

// The front alone, behind a host, on a real tree.
class Front : public testing::Test
{
protected:
    Front() { front->initialize(tree.path(), "", host.portal1(), host.transaction(), &resource); }

    void expectJoined(unsigned long handle) { ASSERT_EQ(front->join(handle), 0); }

    void expectCreated(unsigned long handle, const char* name)
    {
        ASSERT_EQ(front->createMo(handle, fileM.c_str(), "FileGroup", "fileGroupId", name, nullptr), 0);
    }

    unsigned long long newIterator(unsigned long handle)
    {
        unsigned long long iterator = 0;
        EXPECT_EQ(front->newMoIterator(handle, fileM.c_str(), "FileGroup", &iterator), 0);
        return iterator;
    }

    ZolReturnT next(unsigned long long iterator, std::string& name)
    {
        char* text = nullptr;
        const ZolReturnT code = front->nextMo(iterator, &text);
        name = text == nullptr ? "none" : text;
        return code;
    }

    ZolReturnT next(unsigned long long iterator)
    {
        std::string ignored;
        return next(iterator, ignored);
    }

    TemporaryTree tree;
    FakeHost host;
    ZolOamSpiTransactionalResource_1 resource{};
    std::unique_ptr<FileMMoImpl> front = std::make_unique<FileMMoImpl>();
};

using Initialize = Front;
using Join = Front;
using Prepare = Front;
using Commit = Front;
using Abort = Front;
using Finish = Front;
using Lock = Front;
using Destruction = Front;

} // namespace

TEST_F(Initialize, JoinsTheDirectoryPartAndTheLeafPartWithASlashWhateverTheyAre)
{
    struct
    {
        std::string directoryPart;
        std::string leafPart;
        std::string path;
    } const cases[] = {
        {"/data", "fs", "/data/fs"}, {"/data", "", "/data/"},   {"", "data", "/data"}, {"", "", "/"},
        {"x", "x", "x/x"},           {"/a/b/", "c", "/a/b//c"},
    };
    for (const auto& [directoryPart, leafPart, path] : cases)
    {
        const RecordedLog log;
        front->initialize(directoryPart, leafPart, host.portal1(), host.transaction(), &resource);
        EXPECT_EQ(log.statements(), (Texts{"enter  >> ", "enter  >> fileSystemRoot :" + path, "exit  << "}));
    }
}

TEST_F(Join, RegistersTheOwnResourceUnderTheHandle)
{
    EXPECT_EQ(front->join(7), 0);
    ASSERT_EQ(host.participants().size(), 1U);
    EXPECT_EQ(host.participants()[0].txHandle, 7U);
    EXPECT_EQ(host.participants()[0].resource, &resource);
}

TEST_F(Join, RegistersBeforeThereIsAWorker)
{
    ZolReturnT meanwhile = 0;
    host.whileRegistering = [&](unsigned long handle) { meanwhile = front->finish(handle); };
    EXPECT_EQ(front->join(7), 0);
    EXPECT_EQ(meanwhile, -2);
    EXPECT_EQ(front->finish(7), 0);
}

TEST_F(Join, FetchesTheThreadContextForItsWorkerAfterTheRegistration)
{
    EXPECT_EQ(front->join(7), 0);
    EXPECT_EQ(host.calls(), (Texts{"registerParticipant 7",
                                   "getInterface ZolMgmtSpiThreadContextService/ZolMgmtSpiThreadContext/2"}));
}

TEST_F(Join, GivesTheHostsCodeForARefusedRegistrationAndMakesNoWorker)
{
    for (const ZolReturnT code : {-1, -5, 17})
    {
        host.registerParticipantCode = code;
        EXPECT_EQ(front->join(7), code);
        EXPECT_EQ(front->finish(7), -2);
    }
}

TEST_F(Join, LogsARefusedRegistration)
{
    host.registerParticipantCode = -1;
    const RecordedLog log;
    front->join(7);
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> txHandle='7'", "severity-3 Failed to registerParticipant", "exit  << "}));
}

TEST_F(Join, TwiceRegistersTwiceAndKeepsTheFirstWorkerWithItsChanges)
{
    EXPECT_EQ(front->join(7), 0);
    expectCreated(7, "first");
    EXPECT_EQ(front->join(7), 0);
    EXPECT_EQ(host.participants().size(), 2U);

    EXPECT_EQ(front->commit(7), 0);
    EXPECT_EQ(tree.listing(), Texts{"d first"});
    EXPECT_EQ(front->finish(7), 0);
    EXPECT_EQ(front->finish(7), -2);
}

TEST_F(Join, LetsAFailureToMakeTheWorkerGoUpWithTheParticipantRegisteredAndNoWorker)
{
    host.onCall = [](const std::string& call) {
        if (call.starts_with("getInterface"))
        {
            throw std::bad_alloc();
        }
    };
    EXPECT_THROW(front->join(7), std::bad_alloc);
    EXPECT_EQ(host.participants().size(), 1U);
    EXPECT_EQ(front->finish(7), -2);
}

TEST_F(Join, WorksWithoutAThreadContext)
{
    host.refusedInterfaces = {"ZolMgmtSpiThreadContext"};
    const RecordedLog log;
    EXPECT_EQ(front->join(7), 0);
    EXPECT_EQ(log.statements(), (Texts{"enter  >> txHandle='7'",
                                       "severity-3 Could not get threadContext service", "exit  << "}));
    expectCreated(7, "a");
    EXPECT_EQ(front->commit(7), 0);
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}

TEST_F(Prepare, GivesZeroForAnyHandle)
{
    expectJoined(7);
    const RecordedLog log;
    EXPECT_EQ(front->prepare(7), 0);
    EXPECT_EQ(front->prepare(8), 0);
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> txHandle='7'", "exit  << ", "enter  >> txHandle='8'", "exit  << "}));
}

TEST_F(Prepare, DoesNothingOnDisk)
{
    expectJoined(7);
    expectCreated(7, "a");
    EXPECT_EQ(front->prepare(7), 0);
    EXPECT_EQ(tree.listing(), Texts{});
}

TEST_F(Commit, ReachesTheWorkerAndKeepsIt)
{
    expectJoined(7);
    expectCreated(7, "a");
    EXPECT_EQ(front->commit(7), 0);
    EXPECT_EQ(tree.listing(), Texts{"d a"});
    EXPECT_EQ(front->finish(7), 0);
}

TEST_F(Commit, PassesOnTheWorkersFailure)
{
    tree.file("inTheWay");
    expectJoined(7);
    ASSERT_EQ(front->createMo(7, fileGroup("inTheWay").c_str(), "FileGroup", "fileGroupId", "a", nullptr), 0);
    EXPECT_EQ(front->commit(7), -1);
    EXPECT_EQ(front->commit(7), 0) << "the failed changes are forgotten";
    EXPECT_EQ(tree.listing(), Texts{"f inTheWay 1"});
}

TEST_F(Commit, CanBeRepeatedWithNewChangesInBetween)
{
    expectJoined(7);
    expectCreated(7, "a");
    EXPECT_EQ(front->commit(7), 0);
    expectCreated(7, "b");
    EXPECT_EQ(front->commit(7), 0);
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d b"}));
}

TEST_F(Commit, GivesMinusTwoForAnUnknownHandle)
{
    const RecordedLog log;
    EXPECT_EQ(front->commit(7), -2);
    EXPECT_EQ(log.statements(), (Texts{"enter  >> txHandle='7'", "exit  << "}));
}

TEST_F(Commit, DropsTheIteratorsOfTheHandleAndNoOthers)
{
    tree.directory("a");
    expectJoined(7);
    expectJoined(8);
    const auto first = newIterator(7);
    const auto foreign = newIterator(8);
    const auto second = newIterator(7);

    EXPECT_EQ(front->commit(7), 0);

    EXPECT_EQ(next(first), -2);
    EXPECT_EQ(next(second), -2);
    std::string name;
    EXPECT_EQ(next(foreign, name), 0);
    EXPECT_EQ(name, "a");
}

TEST_F(Commit, DropsTheIteratorsOfAnUnknownHandleToo)
{
    expectJoined(7);
    const auto iterator = newIterator(7);
    ASSERT_EQ(front->finish(7), 0);
    ASSERT_EQ(next(iterator), -1) << "the entry outlives its transaction";

    EXPECT_EQ(front->commit(7), -2);
    EXPECT_EQ(next(iterator), -2);
}

TEST_F(Abort, ForgetsTheChangesAndKeepsTheWorker)
{
    expectJoined(7);
    expectCreated(7, "a");
    EXPECT_EQ(front->abort(7), 0);
    EXPECT_EQ(front->commit(7), 0);
    EXPECT_EQ(tree.listing(), Texts{});
    EXPECT_EQ(front->finish(7), 0);
}

TEST_F(Abort, GivesMinusTwoForAnUnknownHandle)
{
    const RecordedLog log;
    EXPECT_EQ(front->abort(7), -2);
    EXPECT_EQ(log.statements(), (Texts{"enter  >> txHandle='7'", "exit  << "}));
}

TEST_F(Abort, DropsTheIteratorsOfTheHandleAndNoOthers)
{
    tree.directory("a");
    expectJoined(7);
    expectJoined(8);
    const auto own = newIterator(7);
    const auto foreign = newIterator(8);

    EXPECT_EQ(front->abort(7), 0);

    EXPECT_EQ(next(own), -2);
    std::string name;
    EXPECT_EQ(next(foreign, name), 0);
    EXPECT_EQ(name, "a");
}

TEST_F(Abort, DropsTheIteratorsOfAnUnknownHandleToo)
{
    expectJoined(7);
    const auto iterator = newIterator(7);
    ASSERT_EQ(front->finish(7), 0);
    ASSERT_EQ(next(iterator), -1) << "the entry outlives its transaction";

    EXPECT_EQ(front->abort(7), -2);
    EXPECT_EQ(next(iterator), -2);
}

TEST_F(Abort, WithoutAnyIteratorChangesNothing)
{
    expectJoined(7);
    EXPECT_EQ(front->abort(7), 0);
    EXPECT_EQ(front->commit(7), 0);
}

TEST_F(Finish, DeletesTheWorkerWithItsChangesAndItsIterators)
{
    tree.directory("a");
    expectJoined(7);
    expectCreated(7, "b");
    newIterator(7);
    ASSERT_EQ(tree.openDescriptors(), 1);

    EXPECT_EQ(front->finish(7), 0);

    EXPECT_EQ(tree.openDescriptors(), 0);
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}

TEST_F(Finish, GivesMinusTwoForAnUnknownHandle)
{
    const RecordedLog log;
    EXPECT_EQ(front->finish(7), -2);
    EXPECT_EQ(log.statements(), (Texts{"enter  >> txHandle='7'", "exit  << "}));
}

TEST_F(Finish, GivesMinusTwoTheSecondTime)
{
    expectJoined(7);
    EXPECT_EQ(front->commit(7), 0);
    EXPECT_EQ(front->finish(7), 0);
    EXPECT_EQ(front->finish(7), -2);
}

TEST_F(Finish, LeavesTheIteratorEntriesBehindForTheNextTransactionOfThatHandle)
{
    tree.directory("a");
    expectJoined(7);
    const auto iterator = newIterator(7);
    ASSERT_EQ(front->finish(7), 0);
    ASSERT_EQ(next(iterator), -1);

    expectJoined(7);
    std::string name;
    EXPECT_EQ(next(iterator, name), 0);
    EXPECT_EQ(name, "none") << "the new worker does not know the iterator";
}

TEST_F(Lock, LetsTheHostCallBackOnTheSameThread)
{
    expectJoined(6);
    ZolReturnT meanwhile = -1;
    host.whileRegistering = [&](unsigned long) { meanwhile = front->commit(6); };
    EXPECT_EQ(front->join(7), 0);
    EXPECT_EQ(meanwhile, 0);
}

TEST_F(Lock, IsReleasedWhenAnOperationThrows)
{
    host.whileRegistering = [](unsigned long) { throw std::runtime_error("no"); };
    EXPECT_THROW(front->join(7), std::runtime_error);
    ZolReturnT code = 0;
    {
        const ObservedThread other([&] { code = front->finish(7); });
    }
    EXPECT_EQ(code, -2);
}

TEST_F(Lock, MakesEveryOtherOperationWaitWhileTheHostRegistersTheParticipant)
{
    expectJoined(6);
    const auto iterator = newIterator(6);
    unsigned long long number = 0;
    char* name = nullptr;
    bool flag = false;
    ZolMoAttributeValueResult_3 result{};
    ZolMoAttributeValuesResult_3 results{};
    const char* names[] = {nullptr};
    const char* dn = fileM.c_str();

    struct
    {
        const char* operation;
        std::function<ZolReturnT()> call;
    } const cases[] = {
        {"join", [&] { return front->join(9); }},
        {"getMoAttribute", [&] { return front->getMoAttribute(5, dn, "size", &result); }},
        {"getMoAttributes", [&] { return front->getMoAttributes(5, dn, names, &results); }},
        {"newMoIterator", [&] { return front->newMoIterator(5, dn, "FileGroup", &number); }},
        {"nextMo", [&] { return front->nextMo(iterator, &name); }},
        {"createMo", [&] { return front->createMo(5, dn, "FileGroup", "fileGroupId", "a", nullptr); }},
        {"deleteMo", [&] { return front->deleteMo(5, dn); }},
        {"action", [&] { return front->action(5, dn, "remove", nullptr, &result); }},
        {"existsMo", [&] { return front->existsMo(5, dn, &flag); }},
        {"countMoChildren", [&] { return front->countMoChildren(5, dn, "FileGroup", &number); }},
        {"commit", [&] { return front->commit(5); }},
        {"abort", [&] { return front->abort(5); }},
        {"finish", [&] { return front->finish(5); }},
    };
    for (const auto& example : cases)
    {
        std::unique_ptr<ObservedThread> other;
        host.whileRegistering = [&](unsigned long handle) {
            if (handle != 7)
            {
                return;
            }
            other = std::make_unique<ObservedThread>([&example] { example.call(); });
            EXPECT_TRUE(other->waits()) << example.operation;
        };
        ASSERT_EQ(front->join(7), 0);
        other.reset();
        ASSERT_EQ(front->finish(7), 0);
    }
}

TEST_F(Lock, IsNotTakenByTheOperationsThatTouchNothing)
{
    host.whileRegistering = [&](unsigned long) {
        // these would wait for ever
        const ObservedThread prepare([&] { EXPECT_EQ(front->prepare(7), 0); });
        const ObservedThread set(
            [&] { EXPECT_EQ(front->setMoAttribute(7, fileM.c_str(), "files", nullptr), -1); });
        const ObservedThread finalize([&] { EXPECT_EQ(front->finalizeMoIterator(1), 0); });
    };
    EXPECT_EQ(front->join(7), 0);
}

TEST_F(Lock, IsHeldAroundTheExitTrace)
{
    const RecordedLog log;
    std::unique_ptr<ObservedThread> other;
    host.whileRegistering = [&](unsigned long) {
        other = std::make_unique<ObservedThread>([&] {
            char* name = nullptr;
            EXPECT_EQ(front->nextMo(4711, &name), -2);
        });
        while (log.calls().size() < 4)
        {
            std::this_thread::yield();
        }
        EXPECT_TRUE(other->waits());
    };
    ASSERT_EQ(front->join(7), 0);
    other.reset();
    // the first enter trace comes before the lock, the second one behind it
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> txHandle='7'", "enter  >> ", "exit  << ", "enter  >> '4711'", "exit  << "}));
}

TEST_F(Destruction, DeletesTheOpenWorkersAndCommitsNothing)
{
    tree.directory("a");
    for (const unsigned long handle : {9UL, 7UL, 8UL})
    {
        expectJoined(handle);
        expectCreated(handle, "new");
        ASSERT_EQ(front->deleteMo(handle, fileGroup("a").c_str()), 0);
        newIterator(handle);
    }
    ASSERT_EQ(tree.openDescriptors(), 3);

    front.reset();

    EXPECT_EQ(tree.openDescriptors(), 0);
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}
