#include "support/FakeRepository.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <zol/common/MoAccessor.h>
#include <zol/common/ZolException.h>

namespace
{

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Zol::MoAccessor;
using zoltest::FakeRepository;

/// Calls the function and gives the code of the ZolException that it throws, or 0.
template<class Function>
int codeOf(const Function& function, const std::string& textPart = "")
{
    try
    {
        function();
    }
    catch (const Zol::ZolException& failure)
    {
        EXPECT_THAT(failure.what(), HasSubstr(textPart));
        return failure.code();
    }
    return 0;
}

TEST(MoAccessorWithoutRepository, KnowsNoFirstInstance)
{
    MoAccessor accessor(1, 60);
    std::string dn = "as it was";
    EXPECT_EQ(
        codeOf([&] { accessor.getFirstMoInstance("ManagedElement,FileM", dn); }, "ManagedElement,FileM"), -2);
    EXPECT_EQ(dn, "as it was");
}

TEST(MoAccessorWithoutRepository, FindsNoChildren)
{
    MoAccessor accessor(1, 60);
    std::list<std::string> children = {"an earlier one"};
    EXPECT_EQ(accessor.getChildren("FileM=1", "FileGroupPolicy", children), 0);
    EXPECT_THAT(children, IsEmpty());
}

TEST(MoAccessorWithoutRepository, ReadsNoAttribute)
{
    MoAccessor accessor(1, 60);
    MoAccessor::MoAttributeValueResult result;
    EXPECT_EQ(codeOf([&] { accessor.getAttrContainer("FileM=1", "fileGroup", result); },
                     "attribute fileGroup of FileM=1"),
              -2);
    EXPECT_EQ(result.container, nullptr);
    EXPECT_EQ(result.releaseCallback, nullptr);
}

TEST(MoAccessor, AsksTheRepositoryInItsTransaction)
{
    FakeRepository repository;
    repository.setChildren("FileM=1", "FileGroupPolicy", {"policy 1", "policy 2"});
    repository.setReferences("policy 1", "fileGroup", {"FileGroup=a"});
    MoAccessor accessor(1, 60);
    accessor.useTransaction(4711);

    std::string dn;
    EXPECT_EQ(accessor.getFirstMoInstance("ManagedElement,FileM", dn), 0);
    EXPECT_EQ(dn, repository.firstInstance);
    std::list<std::string> children = {"an earlier one"};
    EXPECT_EQ(accessor.getChildren("FileM=1", "FileGroupPolicy", children), 0);
    EXPECT_THAT(children, ElementsAre("policy 1", "policy 2"));
    MoAccessor::MoAttributeValueResult result;
    accessor.getAttrContainer("policy 1", "fileGroup", result);
    ASSERT_NE(result.container, nullptr);
    EXPECT_STREQ(result.container->values[0].referenceValue, "FileGroup=a");

    EXPECT_THAT(repository.calls(), ElementsAre("getFirstMoInstance tx=4711 ManagedElement,FileM",
                                                "getChildren tx=4711 FileM=1 FileGroupPolicy",
                                                "getAttribute tx=4711 policy 1 fileGroup"));
}

TEST(MoAccessor, WithoutATransactionAsksWithHandle0)
{
    FakeRepository repository;
    MoAccessor accessor(1, 60);
    std::string dn;
    accessor.getFirstMoInstance("ManagedElement", dn);
    EXPECT_THAT(repository.calls(), ElementsAre("getFirstMoInstance tx=0 ManagedElement"));
}

TEST(MoAccessor, LetsFailuresOfTheRepositoryThrough)
{
    FakeRepository repository;
    repository.firstInstanceFailure = zoltest::throwsZolException(-8);
    repository.childrenFailure = zoltest::throwsRuntimeError("no children");
    repository.setFailure("dn", "name", zoltest::throwsZolException(-7));
    MoAccessor accessor(1, 60);
    std::string dn;
    std::list<std::string> children;
    MoAccessor::MoAttributeValueResult result;
    EXPECT_EQ(codeOf([&] { accessor.getFirstMoInstance("path", dn); }), -8);
    EXPECT_THROW(accessor.getChildren("dn", "class", children), std::runtime_error);
    EXPECT_EQ(codeOf([&] { accessor.getAttrContainer("dn", "name", result); }), -7);
}

TEST(MoAccessor, AsksNobodyOnceTheRepositoryIsGone)
{
    MoAccessor accessor(1, 60);
    std::string dn;
    {
        const FakeRepository repository;
        EXPECT_EQ(codeOf([&] { accessor.getFirstMoInstance("path", dn); }), 0);
    }
    EXPECT_EQ(codeOf([&] { accessor.getFirstMoInstance("path", dn); }), -2);
}

TEST(MoAccessorResult, IsEmptyAtFirst)
{
    const MoAccessor::MoAttributeValueResult result;
    EXPECT_EQ(result.releaseCallback, nullptr);
    EXPECT_EQ(result.container, nullptr);
}

TEST(MoAccessorResult, IsReleasedOnceAtItsEnd)
{
    FakeRepository repository;
    repository.setReferences("dn", "name", {"FileGroup=a"});
    MoAccessor accessor(1, 60);
    {
        MoAccessor::MoAttributeValueResult result;
        accessor.getAttrContainer("dn", "name", result);
        EXPECT_EQ(repository.releases(), 0);
    }
    EXPECT_EQ(repository.releases(), 1);
}

TEST(MoAccessorResult, IsReleasedOnlyIfItHasBothValueAndCallback)
{
    const auto failing = [](ZolMoAttributeValueContainer_3* /*container*/) {
        ADD_FAILURE() << "there is nothing to release";
    };
    ZolMoAttributeValueContainer_3 kept{};
    {
        MoAccessor::MoAttributeValueResult withoutValue;
        withoutValue.releaseCallback = failing;
        MoAccessor::MoAttributeValueResult withoutCallback;
        withoutCallback.container = &kept;
    }
}

TEST(MoAccessorResult, IsReleasedBeforeItHoldsTheNextValue)
{
    FakeRepository repository;
    repository.setReferences("dn", "first", {"FileGroup=a"});
    repository.setReferences("dn", "second", {"FileGroup=b"});
    MoAccessor accessor(1, 60);
    MoAccessor::MoAttributeValueResult result;
    accessor.getAttrContainer("dn", "first", result);
    accessor.getAttrContainer("dn", "second", result);
    EXPECT_EQ(repository.releases(), 1);
    EXPECT_STREQ(result.container->values[0].referenceValue, "FileGroup=b");
}

TEST(MoAccessorResult, KeepsItsValueWhenTheNextReadFails)
{
    FakeRepository repository;
    repository.setReferences("dn", "first", {"FileGroup=a"});
    MoAccessor accessor(1, 60);
    MoAccessor::MoAttributeValueResult result;
    accessor.getAttrContainer("dn", "first", result);
    EXPECT_EQ(codeOf([&] { accessor.getAttrContainer("dn", "unknown", result); }), -2);
    EXPECT_STREQ(result.container->values[0].referenceValue, "FileGroup=a");
}

TEST(MoAccessorType, IsValidOnlyIfItIsTheSame)
{
    const ZolMoAttributeValueContainer_3 container{attrTypeString, 0, nullptr};
    EXPECT_EQ(codeOf([&] { MoAccessor::validateType(container, attrTypeString); }), 0);
    EXPECT_EQ(
        codeOf([&] { MoAccessor::validateType(container, attrTypeReference); }, "type 9, not of type 11"),
        -1);
}

TEST(MoRef, IsReadFromAReference)
{
    EXPECT_EQ(MoAccessor::getSpiType<MoAccessor::MoRef>(), attrTypeReference);
    std::string dn = "FileM=1";
    const ZolMoAttributeValue_3 value{.referenceValue = dn.data()};
    EXPECT_EQ(MoAccessor::extractAttr<MoAccessor::MoRef>(value).dn, "FileM=1");
    const ZolMoAttributeValue_3 none{.referenceValue = nullptr};
    EXPECT_EQ(MoAccessor::extractAttr<MoAccessor::MoRef>(none).dn, "");
}

TEST(MoRef, ComparesAsItsText)
{
    const MoAccessor::MoRef one{"FileM=1"};
    const MoAccessor::MoRef same{"FileM=1"};
    const MoAccessor::MoRef other{"FileM=2"};
    EXPECT_TRUE(one == same);
    EXPECT_TRUE(one != other);
    EXPECT_TRUE(one < other);
}

} // namespace
