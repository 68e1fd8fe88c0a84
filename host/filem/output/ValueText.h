#pragma once

#include "engine/AttributeValue.h"

#include <string>

namespace zolhost::filem
{

/// One value as an operator reads it, without control bytes; a struct as `{name: value, …}`.
std::string valueText(const SingleValue& value);

/// All values, with ", " between them.
std::string valuesText(const AttributeValue& value);

} // namespace zolhost::filem
