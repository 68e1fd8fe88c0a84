#pragma once

#include "filem/output/Json.h"
#include "staging/Receipt.h"

#include <string>

namespace zolhost::filem
{

/// "done", "was so" or "REMAINS".
std::string textOf(Receipt::Item::Result result);

/// Its keys: operation, path, result, why and, of a directory that is made, mode.
Json jsonOf(const Receipt::Item& item);

} // namespace zolhost::filem
