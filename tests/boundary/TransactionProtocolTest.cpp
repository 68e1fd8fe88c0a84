#include "support/DistinguishedNames.h"
#include "support/LoadedComponent.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

using zoltest::fileGroup;
using zoltest::fileM;
using zoltest::LoadedComponent;
using zoltest::RecordedLog;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

// No std::exception.
struct Foreign
{};

class TransactionProtocol : public testing::Test
{
protected:
    TemporaryTree tree;
    LoadedComponent component{tree.path()};
    const ZolOamSpiTransactionalResource_1& resource = component.resource();
};

} // namespace

TEST_F(TransactionProtocol, KnowsATransactionFromItsJoinToItsFinish)
{
    EXPECT_EQ(resource.commit(7), -2);
    EXPECT_EQ(resource.abort(7), -2);
    EXPECT_EQ(resource.finish(7), -2);

    EXPECT_EQ(resource.join(7), 0);
    EXPECT_EQ(resource.prepare(7), 0);
    EXPECT_EQ(resource.commit(7), 0);
    EXPECT_EQ(resource.commit(7), 0);
    EXPECT_EQ(resource.abort(7), 0);
    EXPECT_EQ(resource.finish(7), 0);

    EXPECT_EQ(resource.commit(7), -2);
    EXPECT_EQ(resource.abort(7), -2);
    EXPECT_EQ(resource.finish(7), -2);
}

TEST_F(TransactionProtocol, TakesAnyNumberForAHandle)
{
    for (const unsigned long handle : {0UL, 1UL, ~0UL})
    {
        EXPECT_EQ(resource.join(handle), 0);
        ASSERT_FALSE(component.host.participants().empty());
        EXPECT_EQ(component.host.participants().back().txHandle, handle);
        EXPECT_EQ(resource.finish(handle), 0);
    }
}

TEST_F(TransactionProtocol, PreparesTransactionsThatWereNeverJoined)
{
    EXPECT_EQ(resource.prepare(7), 0);
}

TEST_F(TransactionProtocol, RegistersTheTableThatTheHostFoundInTheRecord)
{
    const auto tx = component.join(7);
    ASSERT_EQ(component.host.participants().size(), 1U);
    EXPECT_EQ(component.host.participants()[0].txHandle, 7U);
    EXPECT_EQ(component.host.participants()[0].resource, &resource);
}

TEST_F(TransactionProtocol, GivesTheHostsCodeForARefusedParticipant)
{
    component.host.registerParticipantCode = 42;
    EXPECT_EQ(resource.join(7), 42);
    EXPECT_EQ(resource.finish(7), -2);
}

TEST_F(TransactionProtocol, AnswersMinusOneForAStdExceptionOfTheHostAndGoesOnWorking)
{
    component.host.whileRegistering = [](unsigned long) { throw std::runtime_error("no"); };
    const RecordedLog log;
    EXPECT_EQ(resource.join(7), -1);
    EXPECT_EQ(log.statements(), Texts{"enter  >> txHandle='7'"});

    component.host.whileRegistering = nullptr;
    const auto tx = component.join(7);
    EXPECT_EQ(tx->create(fileM, "a"), 0);
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}

TEST_F(TransactionProtocol, LetsAnyOtherExceptionOfTheHostThroughAndGoesOnWorking)
{
    component.host.whileRegistering = [](unsigned long) { throw Foreign(); };
    EXPECT_THROW(resource.join(7), Foreign);

    component.host.whileRegistering = nullptr;
    const auto tx = component.join(7);
    EXPECT_EQ(tx->commit(), 0);
}

TEST_F(TransactionProtocol, AnswersMinusOneIfAWorkerCanNotBeMade)
{
    component.host.onCall = [](const std::string& call) {
        if (call.starts_with("getInterface"))
        {
            throw std::bad_alloc();
        }
    };
    EXPECT_EQ(resource.join(7), -1);
    EXPECT_EQ(component.host.participants().size(), 1U);
    EXPECT_EQ(resource.finish(7), -2);
}

TEST_F(TransactionProtocol, LetsTheHostCallBackFromWithinAJoin)
{
    const auto other = component.join(6);
    ASSERT_EQ(other->create(fileM, "a"), 0);
    ZolReturnT meanwhile = -1;
    component.host.whileRegistering = [&](unsigned long) { meanwhile = resource.commit(6); };
    const auto tx = component.join(7);
    EXPECT_EQ(meanwhile, 0);
    EXPECT_EQ(tree.listing(), Texts{"d a"});
}

TEST_F(TransactionProtocol, KeepsTheChangesOfTransactionsApart)
{
    tree.directory("old");
    const auto first = component.join();
    const auto second = component.join();
    EXPECT_EQ(first->create(fileM, "first"), 0);
    EXPECT_EQ(second->create(fileM, "second"), 0);
    EXPECT_EQ(second->deleteMo(fileGroup("old")), 0);

    EXPECT_EQ(first->children(fileM, "FileGroup"), (Texts{"old", "first"}));
    EXPECT_EQ(second->children(fileM, "FileGroup"), Texts{"second"});

    EXPECT_EQ(first->commit(), 0);
    EXPECT_EQ(tree.listing(), (Texts{"d first", "d old"}));
    EXPECT_EQ(second->abort(), 0);
    EXPECT_EQ(second->commit(), 0);
    EXPECT_EQ(tree.listing(), (Texts{"d first", "d old"}));
}

TEST_F(TransactionProtocol, WorksOnBetweenCommitAndFinish)
{
    const auto tx = component.join();
    EXPECT_EQ(tx->create(fileM, "a"), 0);
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tx->create(fileM, "b"), 0);
    EXPECT_EQ(tx->children(fileM, "FileGroup"), (Texts{"a", "b"}));
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tree.listing(), (Texts{"d a", "d b"}));
}

TEST_F(TransactionProtocol, DropsTheChangesOfATransactionThatFinishesWithoutACommit)
{
    const auto tx = component.join();
    EXPECT_EQ(tx->create(fileM, "a"), 0);
    EXPECT_EQ(tx->finish(), 0);
    EXPECT_EQ(tree.listing(), Texts{});
}

TEST_F(TransactionProtocol, StartsAfreshWhenAHandleIsJoinedAgain)
{
    const auto first = component.join(7);
    EXPECT_EQ(first->create(fileM, "a"), 0);
    EXPECT_EQ(first->finish(), 0);

    const auto second = component.join(7);
    EXPECT_EQ(second->commit(), 0);
    EXPECT_EQ(tree.listing(), Texts{});
}

TEST_F(TransactionProtocol, PassesOnTheFailureOfACommitAndForgetsTheRest)
{
    tree.file("inTheWay");
    const auto tx = component.join();
    EXPECT_EQ(tx->create(fileGroup("inTheWay"), "a"), 0);
    EXPECT_EQ(tx->commit(), -1);
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tree.listing(), Texts{"f inTheWay 1"});
}

TEST_F(TransactionProtocol, TracesEachStep)
{
    const RecordedLog log;
    resource.join(7);
    EXPECT_EQ(log.statements(), (Texts{"enter  >> txHandle='7'", "exit  << "}));
    const auto expectTraces = [](ZolReturnT (*step)(unsigned long), const Texts& statements) {
        const RecordedLog own;
        EXPECT_EQ(step(7), 0);
        EXPECT_EQ(own.statements(), statements);
    };
    expectTraces(resource.prepare, {"enter  >> txHandle='7'", "exit  << "});
    expectTraces(resource.commit, {"enter  >> txHandle='7'", "enter  >> ", "exit  << ", "exit  << "});
    expectTraces(resource.abort, {"enter  >> txHandle='7'", "enter  >> ", "exit  << ", "exit  << "});
    expectTraces(resource.finish, {"enter  >> txHandle='7'", "exit  << "});
}

TEST_F(TransactionProtocol, LogsARefusedParticipant)
{
    component.host.registerParticipantCode = -1;
    const RecordedLog log;
    EXPECT_EQ(resource.join(7), -1);
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> txHandle='7'", "severity-3 Failed to registerParticipant", "exit  << "}));
}
