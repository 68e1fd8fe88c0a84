#include "MoAccessorReads.h"

#include "support/FakeRepository.h"
#include "support/RecordedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>

using namespace testing;

namespace zoltest
{

namespace
{

using MoRef = Zol::MoAccessor::MoRef;

class SequenceRead : public Test
{
protected:
    SequenceRead() { accessor.useTransaction(7); }

    std::vector<std::string> read()
    {
        std::vector<std::string> dns;
        for (const MoRef& reference : accessor.getSeqAttr<MoRef>("Policy=1", "fileGroup"))
        {
            dns.push_back(reference.dn);
        }
        return dns;
    }

    FakeRepository repository;
    Zol::MoAccessor accessor{1, 60};
};

TEST_F(SequenceRead, GivesTheElementsInTheirOrder)
{
    repository.setReferences("Policy=1", "fileGroup", {"b", "a", "b"});

    EXPECT_THAT(read(), ElementsAre("b", "a", "b"));
    EXPECT_THAT(repository.calls(), ElementsAre("getAttribute tx=7 Policy=1 fileGroup"));
    EXPECT_EQ(repository.releases(), 1);
}

TEST_F(SequenceRead, WritesATraceForTheCommonSubsystem)
{
    const RecordedLog log;

    read();

    EXPECT_THAT(log.statements(),
                ElementsAre("plain MoAccessor::getAttr<> dName :Policy=1 attrName :fileGroup [subsystem 1]"));
}

TEST_F(SequenceRead, WritesNothingBelowTheLevelOfTraces)
{
    const RecordedLog log(7);

    read();

    EXPECT_THAT(log.statements(), IsEmpty());
}

TEST_F(SequenceRead, GivesNothingWhereTheAttributeCantBeRead)
{
    for (const ZolReturnT code : {-1, -2, 5})
    {
        repository.setFailure("Policy=1", "fileGroup", throwsZolException(code));
        EXPECT_THAT(read(), IsEmpty());
    }
}

TEST_F(SequenceRead, LetsThroughAnyOtherException)
{
    repository.setFailure("Policy=1", "fileGroup", throwsRuntimeError("out of order"));

    EXPECT_THROW(read(), std::runtime_error);
}

TEST_F(SequenceRead, GivesNothingWhereThereIsNoValue)
{
    repository.setNoContainer("Policy=1", "fileGroup");
    EXPECT_THAT(read(), IsEmpty());

    repository.setReferences("Policy=1", "fileGroup", {});
    EXPECT_THAT(read(), IsEmpty());

    // of another type, but nobody looks
    repository.setStrings("Policy=1", "fileGroup", {});
    EXPECT_THAT(read(), IsEmpty());
    EXPECT_EQ(repository.releases(), 2);
}

TEST_F(SequenceRead, RefusesValuesOfAnotherTypeAndReleasesThem)
{
    repository.setStrings("Policy=1", "fileGroup", {"a"});

    EXPECT_THROW(read(), Zol::ZolException);
    EXPECT_EQ(repository.releases(), 1);
}

// A repository whose value announces elements that are not there.
class HollowRepository : public Zol::MoRepository
{
public:
    HollowRepository() { install(this); }
    HollowRepository(const HollowRepository&) = delete;
    HollowRepository& operator=(const HollowRepository&) = delete;
    ~HollowRepository() override { install(nullptr); }

    std::string getFirstMoInstance(unsigned long, const std::string&) override { return {}; }
    std::list<std::string> getChildren(unsigned long, const std::string&, const std::string&) override
    {
        return {};
    }
    void getAttribute(unsigned long, const std::string&, const std::string&,
                      ZolMoAttributeValueResult_3& result) override
    {
        result = {nullptr, &_container};
    }

private:
    ZolMoAttributeValueContainer_3 _container{attrTypeReference, 3, nullptr};
};

TEST(SequenceReadOfAHollowValue, GivesNothing)
{
    HollowRepository repository;
    Zol::MoAccessor accessor(1, 60);

    EXPECT_THAT(accessor.getSeqAttr<MoRef>("Policy=1", "fileGroup"), IsEmpty());
}

TEST(MoRef, ComparesAsTheTextOfItsDn)
{
    EXPECT_EQ(MoRef{"FileM=1"}, MoRef{"FileM=1"});
    EXPECT_NE(MoRef{"FileM=1"}, MoRef{"filem=1"});
    EXPECT_LT(MoRef{"FileM=1"}, MoRef{"FileM=1,FileGroup=a"});
}

} // namespace

} // namespace zoltest
