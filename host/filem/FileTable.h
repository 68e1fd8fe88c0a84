#pragma once

#include "engine/AttributeValue.h"

#include <iosfwd>

namespace zolhost::filem
{

/// Prints the attribute `files` with a head line, or nothing if there are none.
void printFileTable(std::ostream& out, const AttributeValue& files);

} // namespace zolhost::filem
