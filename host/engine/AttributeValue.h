#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>
#include <zol/spi/ZolMoAttributeValue_3.h>

namespace zolhost
{

struct StructMember;

/// The members of a struct value, in their order.
using StructValue = std::vector<StructMember>;

using SingleValue = std::variant<std::int64_t, std::uint64_t, std::string, bool, StructValue>;

/// The values of one attribute, as a copy that owes nothing to the component.
struct AttributeValue
{
    ZolOamSpiMoAttributeType_3 type = attrTypeString;
    std::vector<SingleValue> values;
};

struct StructMember
{
    std::string name;
    AttributeValue value;
};

/// Null gives no values. Throws std::runtime_error for a type that the host doesn't know.
AttributeValue copyOf(const ZolMoAttributeValueContainer_3* container);

} // namespace zolhost
