#include "ways/ListingRecords.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace zolbench
{

namespace
{

ZolMoAttributeValueContainer_3* newContainer(ZolOamSpiMoAttributeType_3 type, std::size_t count)
{
    return new ZolMoAttributeValueContainer_3{type, static_cast<std::uint32_t>(count),
                                              count == 0 ? nullptr : new ZolMoAttributeValue_3[count]};
}

ZolMoAttributeStructMember* newMember(const char* name, ZolOamSpiMoAttributeType_3 type,
                                      ZolMoAttributeStructMember* next)
{
    return new ZolMoAttributeStructMember{::strdup(name), newContainer(type, 1), next};
}

ZolMoAttributeStructMember* newTextMember(const char* name, std::string_view text,
                                          ZolMoAttributeStructMember* next)
{
    auto* const member = newMember(name, attrTypeString, next);
    member->memberValue->values[0].stringValue = ::strndup(text.data(), text.size());
    return member;
}

ZolMoAttributeStructMember* newRecord(const ListedFile& file)
{
    auto* const size = newMember("size", attrTypeUint, nullptr);
    size->memberValue->values[0].uintValue = file.size;
    auto* const type = newTextMember("fileType", file.type, size);
    auto* const time = newTextMember("modificationTime", file.time, type);
    return newTextMember("fileName", file.name, time);
}

void release(ZolMoAttributeValueContainer_3* container);

void releaseRecord(ZolMoAttributeStructMember* member)
{
    while (member != nullptr)
    {
        auto* const next = member->nextMember;
        ::free(member->memberName);
        release(member->memberValue);
        delete member;
        member = next;
    }
}

void release(ZolMoAttributeValueContainer_3* container)
{
    for (std::uint32_t i = 0; i < container->nrOfValues; ++i)
    {
        if (container->valueType == attrTypeStruct)
        {
            releaseRecord(container->values[i].structValue);
        }
        else if (container->valueType == attrTypeString)
        {
            ::free(container->values[i].stringValue);
        }
    }
    delete[] container->values;
    delete container;
}

} // namespace

ZolMoAttributeValueResult_3 listingOf(const std::vector<ListedFile>& files)
{
    auto* const container = newContainer(attrTypeStruct, files.size());
    std::transform(files.begin(), files.end(), container->values, [](const ListedFile& file) {
        ZolMoAttributeValue_3 value{};
        value.structValue = newRecord(file);
        return value;
    });
    return {release, container};
}

ZolMoAttributeValueResult_3 numberResult(std::int64_t number)
{
    auto* const container = newContainer(attrTypeInt, 1);
    container->values[0].intValue = number;
    return {release, container};
}

} // namespace zolbench
