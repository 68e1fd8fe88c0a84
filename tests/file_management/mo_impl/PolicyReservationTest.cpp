#include "ReadsFixture.h"
#include "support/AttributeText.h"
#include "support/ChildProcess.h"
#include "support/FakeRepository.h"

#include <csignal>

using namespace testing;

namespace zoltest
{

namespace
{

const std::string policyA = fileM + ",FileGroupPolicy=a";
const std::string policyB = fileM + ",FileGroupPolicy=b";
const std::string policyC = fileM + ",FileGroupPolicy=c";

class PolicyReservation : public Reads
{
protected:
    PolicyReservation()
    {
        tree.directory("d");
        // the DN of the root object is asked for once in a process, here at the latest
        worker.getFileMRoot();
        repository.clear();
    }

    void setPolicies(std::list<std::string> policies)
    {
        repository.setChildren(fileM, "FileGroupPolicy", std::move(policies));
    }
    std::string reservers() { return attribute(d, "reservedByPolicy"); }

    FakeRepository repository;
    const std::string d = groupDn("d");
    const std::string other = groupDn("other");
};

std::string references(const Texts& dns)
{
    std::string text;
    for (const auto& dn : dns)
    {
        text += (text.empty() ? "\"" : ", \"") + dn + "\"";
    }
    return "reference[" + text + "]";
}

TEST_F(PolicyReservation, IsNoneWithoutPolicies)
{
    QenMoAttributeValueResult_3 result{};

    ASSERT_EQ(worker.getAttribute(d.c_str(), "reservedByPolicy", result), 0);

    EXPECT_EQ(result.container->valueType, 11);
    EXPECT_EQ(result.container->nrOfValues, 0U);
    EXPECT_EQ(result.container->values, nullptr);
    result.releaseCallback(result.container);
}

TEST_F(PolicyReservation, IsByThePoliciesThatNameTheDirectoryInTheirOrder)
{
    setPolicies({policyC, policyA, policyB});
    repository.setReferences(policyA, "fileGroup", {other});
    repository.setReferences(policyB, "fileGroup", {other, d});
    repository.setReferences(policyC, "fileGroup", {d, other});

    EXPECT_EQ(reservers(), references({policyC, policyB}));
}

TEST_F(PolicyReservation, IsTwiceByAPolicyThatNamesTheDirectoryTwice)
{
    setPolicies({policyA, policyB});
    repository.setReferences(policyA, "fileGroup", {d, other, d});
    repository.setReferences(policyB, "fileGroup", {d});

    EXPECT_EQ(reservers(), references({policyA, policyA, policyB}));
}

TEST_F(PolicyReservation, IsByTheExactTextOfTheDn)
{
    setPolicies({policyA});
    repository.setReferences(policyA, "fileGroup",
                             {d + " ", d + ",FileGroup=inner", fileM + ", FileGroup=d", "FileGroup=d",
                              groupDn("D"), groupDn("\\64"), ""});

    EXPECT_EQ(reservers(), references({}));
}

TEST_F(PolicyReservation, IsReadInTheTransactionFromTheRootObjectAndEachPolicy)
{
    setPolicies({policyA, policyB});
    const std::string tx = " tx=" + std::to_string(txHandle) + " ";

    reservers();

    EXPECT_THAT(repository.calls(), Contains("getChildren" + tx + fileM + " FileGroupPolicy"));
    EXPECT_THAT(repository.calls(), IsSupersetOf({"getAttribute" + tx + policyA + " fileGroup",
                                                  "getAttribute" + tx + policyB + " fileGroup"}));
    EXPECT_THAT(repository.calls(), SizeIs(3));
}

TEST_F(PolicyReservation, IsReadAnewEachTime)
{
    setPolicies({policyA});
    repository.setReferences(policyA, "fileGroup", {other});
    EXPECT_EQ(reservers(), references({}));

    repository.setReferences(policyA, "fileGroup", {d});
    EXPECT_EQ(reservers(), references({policyA}));
    EXPECT_THAT(repository.calls(), SizeIs(4));
}

TEST_F(PolicyReservation, WritesEachReadOfAPolicyForTheCommonSubsystem)
{
    setPolicies({policyA, policyB});
    repository.setReferences(policyB, "fileGroup", {d});
    const RecordedLog log;

    reservers();

    EXPECT_THAT(
        log.statements(),
        ElementsAre("enter  >>  dn :" + d + ", attr :reservedByPolicy",
                    "plain MoAccessor::getAttr<> dName :" + policyA + " attrName :fileGroup [subsystem 1]",
                    "plain MoAccessor::getAttr<> dName :" + policyB + " attrName :fileGroup [subsystem 1]"));
}

TEST_F(PolicyReservation, IsNotByAPolicyThatCantBeRead)
{
    setPolicies({policyA, policyB, policyC});
    repository.setFailure(policyA, "fileGroup", throwsZolException(-1));
    repository.setNoContainer(policyB, "fileGroup");
    repository.setReferences(policyC, "fileGroup", {d});

    EXPECT_EQ(reservers(), references({policyC}));
}

TEST_F(PolicyReservation, CantBeReadWhereAPolicyNamesSomethingThatIsNoReference)
{
    setPolicies({policyA, policyB, policyC});
    repository.setReferences(policyA, "fileGroup", {d});
    repository.setStrings(policyB, "fileGroup", {d});
    const RecordedLog log;

    EXPECT_EQ(reservers(), "code -1");
    EXPECT_THAT(log.statements(), SizeIs(3)); // nothing of the failure, and no third policy
    EXPECT_EQ(repository.releases(), 2);
}

TEST_F(PolicyReservation, IsNotByAPolicyWithoutValuesWhateverTheirType)
{
    setPolicies({policyA, policyB});
    repository.setStrings(policyA, "fileGroup", {});
    repository.setReferences(policyB, "fileGroup", {d});

    EXPECT_EQ(reservers(), references({policyB}));
}

TEST_F(PolicyReservation, CantBeReadWhereAnotherExceptionComesUp)
{
    setPolicies({policyA});
    repository.setFailure(policyA, "fileGroup", throwsRuntimeError("out of order"));
    const RecordedLog log;

    EXPECT_EQ(reservers(), "code -1");
    EXPECT_EQ(log.statements().back(), "plain Unexpected exception :out of order");
}

TEST_F(PolicyReservation, CantBeReadWhereThePoliciesCantBeTold)
{
    for (const ZolReturnT code : {-2, 17})
    {
        repository.childrenFailure = throwsZolException(code);
        const RecordedLog log;

        EXPECT_EQ(reservers(), "code " + std::to_string(code));
        EXPECT_THAT(log.statements(), ElementsAre("enter  >>  dn :" + d + ", attr :reservedByPolicy"));
    }
    EXPECT_THAT(attributes(d, {"fileGroupId", "reservedByPolicy"}), ElementsAre("code 17"));
}

TEST_F(PolicyReservation, EndsTheProcessOnWhatIsNoException)
{
    repository.childrenFailure = throwsForeign();

    const ChildOutcome outcome = runInChild([this] { return reservers().empty() ? 1 : 0; });

    EXPECT_EQ(outcome.signal, SIGABRT);
}

TEST_F(PolicyReservation, ReleasesAllThatItReads)
{
    setPolicies({policyA, policyB});
    repository.setReferences(policyA, "fileGroup", {d, other});
    repository.setReferences(policyB, "fileGroup", {other});

    reservers();

    EXPECT_EQ(repository.handedOut(), 2);
    EXPECT_EQ(repository.releases(), 2);
}

TEST_F(PolicyReservation, AppendsToWhatIsThere)
{
    setPolicies({policyA});
    repository.setReferences(policyA, "fileGroup", {d});
    Texts reservers{"first"};

    worker.getFileGroupReservers(d.c_str(), reservers);

    EXPECT_THAT(reservers, ElementsAre("first", policyA));
}

using PolicyReservationOnItsOwn = Reads;

TEST_F(PolicyReservationOnItsOwn, IsNoneWhereTheHostHasNoOtherObjects)
{
    tree.directory("d");

    EXPECT_EQ(attribute(groupDn("d"), "reservedByPolicy"), "reference[]");
}

} // namespace

} // namespace zoltest
