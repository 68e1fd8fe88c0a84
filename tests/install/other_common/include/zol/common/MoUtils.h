#pragma once

#include <zol/spi/ZolMoAttributeValue_3.h>

namespace Zol
{

struct MoUtils
{
    static void deleteAttributeValueContainer(QenMoAttributeValueContainer_3* container);
};

} // namespace Zol
