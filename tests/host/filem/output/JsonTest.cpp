#include "filem/output/Json.h"

#include <gtest/gtest.h>

using namespace zolhost::filem;
using zolhost::AttributeValue;
using zolhost::StructMember;
using zolhost::StructValue;

TEST(Json, HoldsTextsThatAreNoUtf8AsHexadecimalBesideThem)
{
    Json object;
    setText(object, "name", "a\xc3\xa9");
    setText(object, "other", "a\xff");
    EXPECT_EQ(jsonOf(std::string("a\xff")).dump(), R"({"hex":"61ff"})");
    EXPECT_EQ(object.dump(), "{\"name\":\"a\xc3\xa9\",\"other\":null,\"otherHex\":\"61ff\"}");
}

TEST(Json, HoldsAttributesExactly)
{
    const AttributeValue size = {attrTypeUint, {std::uint64_t{18446744073709551615U}}};
    const AttributeValue flag = {attrTypeBool, {true}};
    const AttributeValue references = {attrTypeReference, {std::string("a"), std::string("b\xff")}};
    const AttributeValue file = {
        attrTypeStruct,
        {StructValue{StructMember{"fileName", {attrTypeString, {std::string("x\xff")}}},
                     StructMember{"size", size}}}};
    EXPECT_EQ(jsonOf(size, false).dump(), "18446744073709551615");
    EXPECT_EQ(jsonOf(flag, false).dump(), "true");
    EXPECT_EQ(jsonOf({}, false).dump(), "null");
    EXPECT_EQ(jsonOf({}, true).dump(), "[]");
    EXPECT_EQ(jsonOf(references, true).dump(), R"(["a",{"hex":"62ff"}])");
    EXPECT_EQ(jsonOf(file, true).dump(),
              R"([{"fileName":null,"fileNameHex":"78ff","size":18446744073709551615}])");
}
