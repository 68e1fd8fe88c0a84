#pragma once

#include <zol/spi/ZolMoAttributeValue_3.h>

namespace Zol
{

/// Memory of results. Any thread may call.
class MoUtils
{
public:
    /// Frees a container with everything below it; null is harmless. Containers and struct members come from
    /// `new`, value arrays from array `new`, texts from `strdup`.
    static void deleteAttributeValueContainer(QenMoAttributeValueContainer_3* container) noexcept;
};

} // namespace Zol
