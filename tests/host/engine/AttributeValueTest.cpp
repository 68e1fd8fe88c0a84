#include "engine/AttributeValue.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

using namespace zolhost;

namespace
{

ZolMoAttributeValue_3 text(std::string& value)
{
    ZolMoAttributeValue_3 record = {};
    record.stringValue = value.data();
    return record;
}

} // namespace

TEST(AttributeValue, CopiesEveryType)
{
    ZolMoAttributeValue_3 number = {};
    number.intValue = -5;
    ZolMoAttributeValueContainer_3 container = {attrTypeInt, 1, &number};
    EXPECT_EQ(std::get<std::int64_t>(copyOf(&container).values.at(0)), -5);

    number.uintValue = 18'000'000'000'000'000'000U;
    container.valueType = attrTypeUint;
    EXPECT_EQ(std::get<std::uint64_t>(copyOf(&container).values.at(0)), 18'000'000'000'000'000'000U);

    number.boolValue = true;
    container.valueType = attrTypeBool;
    EXPECT_TRUE(std::get<bool>(copyOf(&container).values.at(0)));

    std::string first = "first";
    std::string second;
    ZolMoAttributeValue_3 texts[] = {text(first), text(second)};
    for (const auto type : {attrTypeString, attrTypeReference})
    {
        container = {type, 2, texts};
        const auto copy = copyOf(&container);
        EXPECT_EQ(copy.type, type);
        ASSERT_EQ(copy.values.size(), 2U);
        EXPECT_EQ(std::get<std::string>(copy.values[0]), "first");
        EXPECT_EQ(std::get<std::string>(copy.values[1]), "");
    }
}

TEST(AttributeValue, CopiesStructsWithTheirMembersInOrder)
{
    std::string name = "a.log";
    ZolMoAttributeValue_3 nameValue = text(name);
    ZolMoAttributeValue_3 sizeValue = {};
    sizeValue.uintValue = 7;
    ZolMoAttributeValueContainer_3 nameContainer = {attrTypeString, 1, &nameValue};
    ZolMoAttributeValueContainer_3 sizeContainer = {attrTypeUint, 1, &sizeValue};
    std::string nameMember = "fileName";
    std::string sizeMember = "size";
    ZolMoAttributeStructMember size = {sizeMember.data(), &sizeContainer, nullptr};
    ZolMoAttributeStructMember head = {nameMember.data(), &nameContainer, &size};
    ZolMoAttributeValue_3 value = {};
    value.structValue = &head;
    const ZolMoAttributeValueContainer_3 container = {attrTypeStruct, 1, &value};

    const auto copy = copyOf(&container);
    const auto& members = std::get<StructValue>(copy.values.at(0));
    ASSERT_EQ(members.size(), 2U);
    EXPECT_EQ(members[0].name, "fileName");
    EXPECT_EQ(std::get<std::string>(members[0].value.values.at(0)), "a.log");
    EXPECT_EQ(members[1].name, "size");
    EXPECT_EQ(std::get<std::uint64_t>(members[1].value.values.at(0)), 7U);
}

TEST(AttributeValue, HasNoValuesWithoutAContainerOrWithAnEmptyOne)
{
    EXPECT_TRUE(copyOf(nullptr).values.empty());
    const ZolMoAttributeValueContainer_3 container = {attrTypeReference, 0, nullptr};
    EXPECT_TRUE(copyOf(&container).values.empty());
    EXPECT_EQ(copyOf(&container).type, attrTypeReference);
}

TEST(AttributeValue, OfAnUnknownTypeIsRefused)
{
    ZolMoAttributeValue_3 value = {};
    const ZolMoAttributeValueContainer_3 container = {static_cast<ZolOamSpiMoAttributeType_3>(5), 1, &value};
    EXPECT_THROW(copyOf(&container), std::runtime_error);
}
