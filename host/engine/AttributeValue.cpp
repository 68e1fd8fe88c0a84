#include "engine/AttributeValue.h"

#include <span>
#include <stdexcept>

namespace zolhost
{

namespace
{

SingleValue copyOf(ZolOamSpiMoAttributeType_3 type, const ZolMoAttributeValue_3& value)
{
    switch (type)
    {
    case attrTypeInt:
        return value.intValue;
    case attrTypeUint:
        return value.uintValue;
    case attrTypeString:
        return std::string(value.stringValue);
    case attrTypeBool:
        return value.boolValue;
    case attrTypeReference:
        return std::string(value.referenceValue);
    case attrTypeStruct:
        break;
    default:
        throw std::runtime_error("a value is of type " + std::to_string(type) +
                                 ", which this host doesn't know");
    }
    StructValue members;
    for (const auto* member = value.structValue; member != nullptr; member = member->nextMember)
    {
        members.push_back({member->memberName, zolhost::copyOf(member->memberValue)});
    }
    return members;
}

} // namespace

AttributeValue copyOf(const ZolMoAttributeValueContainer_3* container)
{
    AttributeValue copy;
    if (container != nullptr)
    {
        copy.type = container->valueType;
        for (const auto& value : std::span(container->values, container->nrOfValues))
        {
            copy.values.push_back(copyOf(copy.type, value));
        }
    }
    return copy;
}

} // namespace zolhost
