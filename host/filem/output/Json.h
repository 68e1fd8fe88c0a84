#pragma once

#include "engine/AttributeValue.h"

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

namespace zolhost::filem
{

/// Keys stand in the order in which they were set.
using Json = nlohmann::ordered_json;

/// Sets the text under the key. JSON holds no other texts than UTF-8: another one is null, and its bytes
/// stand in hexadecimal under the key with "Hex" behind it.
void setText(Json& object, const std::string& key, std::string_view text);

/// The text, or {"hex": "…"} if it is no UTF-8.
Json jsonOf(const std::string& text);

/// The values of an attribute; a list for an attribute that is one.
Json jsonOf(const AttributeValue& value, bool isList);

} // namespace zolhost::filem
