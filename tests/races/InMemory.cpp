#include "support/MemoryFolder.h"

namespace
{

const bool isInMemory = (zoltest::useMemoryFolder(), true);

} // namespace
