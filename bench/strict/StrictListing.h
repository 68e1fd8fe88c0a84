#pragma once

#include "ways/ListingRecords.h"

namespace zolbench
{

/// The files of a directory in the order of a listing, each asked for once.
std::vector<ListedFile> strictFiles(const std::string& directory);

} // namespace zolbench
