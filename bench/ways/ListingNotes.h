#pragma once

#include "ways/Findings.h"

#include <zol/spi/ZolMoAttributeValue_3.h>

namespace zolbench
{

/// Notes each file of a listing as a host gets it, unless `findings` is null.
void noteListing(Findings* findings, const ZolMoAttributeValueContainer_3& listing);

} // namespace zolbench
