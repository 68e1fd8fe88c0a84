#pragma once

#include <string>
#include <zol/spi/ZolMoAttributeValue_3.h>

namespace zolbench
{

/// The listing of a directory's files as the records that a host gets, which it releases.
ZolMoAttributeValueResult_3 strictListing(const std::string& directory);

/// An attribute of one number, to be released like any other.
ZolMoAttributeValueResult_3 strictNumber(std::int64_t number);

} // namespace zolbench
