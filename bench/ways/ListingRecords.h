#pragma once

#include <string>
#include <vector>
#include <zol/spi/ZolMoAttributeValue_3.h>

namespace zolbench
{

struct ListedFile
{
    std::string name;
    std::uint64_t size;
    std::string type;
    std::string time;

    bool operator<(const ListedFile& other) const { return name < other.name; }
};

/// The listing as the records that a host gets, which it releases.
ZolMoAttributeValueResult_3 listingOf(const std::vector<ListedFile>& files);

/// An attribute of one number, to be released like any other.
ZolMoAttributeValueResult_3 numberResult(std::int64_t number);

} // namespace zolbench
