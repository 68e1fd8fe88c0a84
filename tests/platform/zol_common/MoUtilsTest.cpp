#include <cstring>
#include <gtest/gtest.h>
#include <initializer_list>
#include <limits>
#include <string>
#include <zol/common/MoUtils.h>

// The containers are whole only if AddressSanitizer finds neither a leak nor a wrong release, so the tests
// expect little themselves.
namespace
{

using Container = QenMoAttributeValueContainer_3;
using Member = QenMoAttributeStructMember;
using Value = QenMoAttributeValue_3;
using Zol::MoUtils;

Container* containerOf(QenOamSpiMoAttributeType_3 type, std::initializer_list<Value> values)
{
    auto* const container = new Container{type, static_cast<uint32_t>(values.size()), nullptr};
    if (values.size() > 0)
    {
        container->values = new Value[values.size()];
        std::copy(values.begin(), values.end(), container->values);
    }
    return container;
}

Value text(const char* content)
{
    return {.stringValue = strdup(content)};
}

Value reference(const char* dn)
{
    return {.referenceValue = strdup(dn)};
}

Member* member(const char* name, Container* value, Member* next = nullptr)
{
    return new Member{strdup(name), value, next};
}

Container* oneOfEach()
{
    return containerOf(
        attrTypeStruct,
        {{.structValue = member(
              "text", containerOf(attrTypeString, {text("a"), text("")}),
              member("dn", containerOf(attrTypeReference, {reference("FileM=1"), reference("FileM=2")}),
                     member("int", containerOf(attrTypeInt, {{.intValue = -1}}),
                            member("uint", containerOf(attrTypeUint, {{.uintValue = 1}}),
                                   member("bool", containerOf(attrTypeBool, {{.boolValue = true}}))))))},
         {.structValue = member("none", containerOf(attrTypeString, {}))}});
}

TEST(ReleaseOfAContainer, OfNullIsHarmless)
{
    MoUtils::deleteAttributeValueContainer(nullptr);
}

TEST(ReleaseOfAContainer, FreesEveryTypeByItself)
{
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeString, {text("a"), text("b")}));
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeReference, {reference("FileM=1")}));
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeInt, {{.intValue = 1}}));
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeUint, {{.uintValue = 1}}));
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeBool, {{.boolValue = false}}));
    MoUtils::deleteAttributeValueContainer(oneOfEach());
}

TEST(ReleaseOfAContainer, FreesStructsInStructs)
{
    Container* const inner = containerOf(attrTypeStruct, {{.structValue = member("inner", oneOfEach())}});
    MoUtils::deleteAttributeValueContainer(containerOf(
        attrTypeStruct,
        {{.structValue = member("first", inner, member("second", oneOfEach()))},
         {.structValue = member("third", containerOf(attrTypeReference, {reference("FileM=1")}))}}));
}

TEST(ReleaseOfAContainer, TakesNumbersForNothingElse)
{
    // as addresses these would be wrong ones to free
    const auto number = std::numeric_limits<uint64_t>::max() / 2;
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeUint, {{.uintValue = number}}));
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeInt, {{.intValue = -8}}));
}

TEST(ReleaseOfAContainer, WithoutValuesLeavesTheArrayAlone)
{
    for (const auto type : {attrTypeInt, attrTypeString, attrTypeReference, attrTypeStruct})
    {
        MoUtils::deleteAttributeValueContainer(containerOf(type, {}));
        MoUtils::deleteAttributeValueContainer(new Container{type, 2, nullptr});
    }
}

TEST(ReleaseOfAContainer, TakesWhatWasNeverFilledIn)
{
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeString, {{.stringValue = nullptr}}));
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeReference, {{.referenceValue = nullptr}}));
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeStruct, {{.structValue = nullptr}}));
    MoUtils::deleteAttributeValueContainer(
        containerOf(attrTypeStruct, {{.structValue = new Member{nullptr, nullptr, nullptr}}}));
}

TEST(ReleaseOfAContainer, FollowsALongListOfMembers)
{
    Member* first = nullptr;
    for (int i = 0; i < 100'000; ++i)
    {
        first = member("member", nullptr, first);
    }
    MoUtils::deleteAttributeValueContainer(containerOf(attrTypeStruct, {{.structValue = first}}));
}

} // namespace
