#include "ways/ListingNotes.h"

#include "ways/Way.h"

namespace zolbench
{

namespace
{

const ZolMoAttributeValue_3& member(const ZolMoAttributeStructMember* file, std::size_t position)
{
    for (; position > 0; --position)
    {
        file = file->nextMember;
    }
    return file->memberValue->values[0];
}

} // namespace

void noteListing(Findings* findings, const ZolMoAttributeValueContainer_3& listing)
{
    for (std::uint32_t i = 0; findings != nullptr && i < listing.nrOfValues; ++i)
    {
        const ZolMoAttributeStructMember* file = listing.values[i].structValue;
        const std::string name = member(file, 0).stringValue;
        const std::uint64_t size = member(file, 3).uintValue;
        note(findings, name.c_str(), size);
        findings->details.insert(name + ' ' + std::to_string(size) + ' ' + member(file, 2).stringValue + ' ' +
                                 member(file, 1).stringValue);
    }
}

} // namespace zolbench
