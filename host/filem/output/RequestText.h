#pragma once

#include "filem/output/Json.h"
#include "staging/Request.h"

#include <string>

namespace zolhost::filem
{

/// The verb that asks for it.
std::string verbOf(const Request& request);

/// As one types it: "rm --matching 'core.*' cores".
std::string textOf(const Request& request);

/// Its keys: verb, dn, path and, where it has one, expression.
Json jsonOf(const Request& request);

} // namespace zolhost::filem
