#include <cstdlib>
#include <zol/common/MoUtils.h>

namespace Zol
{

namespace
{

void deleteStruct(QenMoAttributeStructMember* member) noexcept
{
    while (member != nullptr)
    {
        QenMoAttributeStructMember* const next = member->nextMember;
        std::free(member->memberName);
        MoUtils::deleteAttributeValueContainer(member->memberValue);
        delete member;
        member = next;
    }
}

void deleteContent(QenOamSpiMoAttributeType_3 type, QenMoAttributeValue_3& value) noexcept
{
    switch (type)
    {
    case attrTypeString:
        std::free(value.stringValue);
        break;
    case attrTypeReference:
        std::free(value.referenceValue);
        break;
    case attrTypeStruct:
        deleteStruct(value.structValue);
        break;
    default:
        break;
    }
}

} // namespace

void MoUtils::deleteAttributeValueContainer(QenMoAttributeValueContainer_3* container) noexcept
{
    if (container == nullptr)
    {
        return;
    }
    if (container->values != nullptr)
    {
        for (uint32_t i = 0; i < container->nrOfValues; ++i)
        {
            deleteContent(container->valueType, container->values[i]);
        }
    }
    delete[] container->values;
    delete container;
}

} // namespace Zol
