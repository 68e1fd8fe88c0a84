#include "support/AttributeText.h"

namespace zoltest
{

namespace
{

std::string quoted(const char* text)
{
    return text == nullptr ? "null" : "\"" + std::string(text) + "\"";
}

std::string structText(const ZolMoAttributeStructMember* member)
{
    std::string text;
    for (; member != nullptr; member = member->nextMember)
    {
        text +=
            (text.empty() ? "" : ", ") + std::string(member->memberName) + ": " + toText(member->memberValue);
    }
    return "{" + text + "}";
}

std::string typeName(ZolOamSpiMoAttributeType_3 type)
{
    switch (type)
    {
    case attrTypeInt:
        return "int";
    case attrTypeUint:
        return "uint";
    case attrTypeString:
        return "string";
    case attrTypeBool:
        return "bool";
    case attrTypeReference:
        return "reference";
    case attrTypeStruct:
        return "struct";
    }
    return "type " + std::to_string(type);
}

std::string valueText(ZolOamSpiMoAttributeType_3 type, const ZolMoAttributeValue_3& value)
{
    switch (type)
    {
    case attrTypeInt:
        return std::to_string(value.intValue);
    case attrTypeUint:
        return std::to_string(value.uintValue);
    case attrTypeString:
        return quoted(value.stringValue);
    case attrTypeBool:
        return value.boolValue ? "true" : "false";
    case attrTypeReference:
        return quoted(value.referenceValue);
    case attrTypeStruct:
        return structText(value.structValue);
    }
    return "?";
}

} // namespace

std::string toText(const ZolMoAttributeValueContainer_3* container)
{
    if (container == nullptr)
    {
        return "none";
    }
    if ((container->nrOfValues == 0) != (container->values == nullptr))
    {
        return "MALFORMED " + typeName(container->valueType) + ": " + std::to_string(container->nrOfValues) +
               " values in " + (container->values == nullptr ? "no array" : "an array");
    }
    std::string text;
    for (uint32_t i = 0; i < container->nrOfValues; ++i)
    {
        text += (i == 0 ? "" : ", ") + valueText(container->valueType, container->values[i]);
    }
    return typeName(container->valueType) + "[" + text + "]";
}

} // namespace zoltest
