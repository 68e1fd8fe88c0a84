#include "engine/Transaction.h"

#include "engine/Refusal.h"

#include <gtest/gtest.h>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

using zolhost::Refusal;
using zolhost::Transaction;
using zolhost::TransactionService;

namespace
{

using Texts = std::vector<std::string>;

/// What the component was called with, and what it answers.
struct Component
{
    Texts calls;
    std::map<std::string, ZolReturnT> codes;
    int registrations = 1; ///< of each join
};

Component component; // NOLINT(cert-err58-cpp): behind functions without context

ZolReturnT note(const char* call, unsigned long txHandle)
{
    component.calls.push_back(call + std::to_string(txHandle));
    return component.codes[call];
}

ZolReturnT join(unsigned long txHandle);

ZolOamSpiTransactionalResource_1 resource = {
    "Test",
    "ZolOamSpiTransactionalResource",
    "1",
    join,
    [](unsigned long txHandle) { return note("prepare ", txHandle); },
    [](unsigned long txHandle) { return note("commit ", txHandle); },
    [](unsigned long txHandle) { return note("abort ", txHandle); },
    [](unsigned long txHandle) { return note("finish ", txHandle); }};

ZolReturnT join(unsigned long txHandle)
{
    for (int i = 0; i < component.registrations; ++i)
    {
        EXPECT_EQ(TransactionService::table()->registerParticipant(txHandle, &resource), 0);
    }
    return note("join ", txHandle);
}

class TransactionTest : public testing::Test
{
protected:
    void SetUp() override { component = {}; }

    TransactionService service;
};

std::string whyRefused(Transaction& transaction)
{
    try
    {
        transaction.commit();
        return "done";
    }
    catch (const Refusal& refusal)
    {
        EXPECT_EQ(refusal.kind(), Refusal::Kind::Failed);
        EXPECT_EQ(refusal.dn(), "");
        return refusal.what();
    }
}

} // namespace

TEST_F(TransactionTest, IsJoinedPreparedCommittedAndFinishedOnce)
{
    {
        Transaction transaction(service, resource);
        EXPECT_EQ(transaction.handle(), 1U);
        transaction.commit();
        transaction.abort();
    }
    EXPECT_EQ(component.calls, (Texts{"join 1", "prepare 1", "commit 1", "finish 1"}));
}

TEST_F(TransactionTest, IsAbortedAndFinishedOnce)
{
    {
        Transaction transaction(service, resource);
        transaction.abort();
        transaction.abort();
    }
    EXPECT_EQ(component.calls, (Texts{"join 1", "abort 1", "finish 1"}));
}

TEST_F(TransactionTest, IsAbortedAtItsEndUnlessItWasCommitted)
{
    {
        const Transaction transaction(service, resource);
    }
    EXPECT_EQ(component.calls, (Texts{"join 1", "abort 1", "finish 1"}));
}

TEST_F(TransactionTest, IsNotCommittedIfItIsNotPrepared)
{
    component.codes["prepare "] = -5;
    Transaction transaction(service, resource);
    EXPECT_EQ(whyRefused(transaction), "the component answers with code -5");
    EXPECT_EQ(component.calls, (Texts{"join 1", "prepare 1", "abort 1", "finish 1"}));
}

TEST_F(TransactionTest, IsFinishedAlsoIfItsCommitFails)
{
    component.codes["commit "] = -1;
    Transaction transaction(service, resource);
    EXPECT_EQ(whyRefused(transaction), "a step failed; what was done before it stays, the rest is forgotten");
    EXPECT_EQ(component.calls, (Texts{"join 1", "prepare 1", "commit 1", "finish 1"}));
}

TEST_F(TransactionTest, IsNotThereIfTheComponentDoesNotJoin)
{
    component.codes["join "] = -7;
    EXPECT_THROW(Transaction(service, resource), Refusal);
    EXPECT_EQ(component.calls, Texts{"join 1"});
    EXPECT_EQ(service.participants(1), TransactionService::Participants{});
}

TEST_F(TransactionTest, IsDrivenOnceThroughAParticipantThatRegistersTwice)
{
    component.registrations = 2;
    Transaction(service, resource).commit();
    EXPECT_EQ(component.calls, (Texts{"join 1", "prepare 1", "commit 1", "finish 1"}));
}

TEST_F(TransactionTest, IsNotDrivenThroughAComponentThatTakesNoPart)
{
    component.registrations = 0;
    Transaction(service, resource).commit();
    EXPECT_EQ(component.calls, Texts{"join 1"});
}

TEST_F(TransactionTest, HasAHandleOfItsOwn)
{
    const Transaction first(service, resource);
    const Transaction second(service, resource);
    EXPECT_EQ(first.handle(), 1U);
    EXPECT_EQ(second.handle(), 2U);
    EXPECT_EQ(service.participants(1), TransactionService::Participants{&resource});
    EXPECT_EQ(service.participants(2), TransactionService::Participants{&resource});
}

TEST_F(TransactionTest, TakesNoParticipantBeforeItBeginsAndAfterItHasEnded)
{
    EXPECT_EQ(TransactionService::table()->registerParticipant(1, &resource), ZolReturnNoSuch);
    Transaction transaction(service, resource);
    transaction.commit();
    EXPECT_EQ(TransactionService::table()->registerParticipant(1, &resource), ZolReturnNoSuch);
}

TEST(TransactionService, RefusesParticipantsWhenThereIsNone)
{
    EXPECT_EQ(TransactionService::table()->registerParticipant(1, &resource), ZolReturnFailure);
}

TEST(TransactionService, IsTheOnlyOneOfItsProcess)
{
    const TransactionService service;
    EXPECT_THROW(TransactionService(), std::logic_error);
    EXPECT_EQ(TransactionService::table()->registerParticipant(1, &resource), ZolReturnNoSuch)
        << "the first one is still there";
}
