#pragma once

#include <map>
#include <string>

namespace ZolFileManagement
{

/// Replaces all occurrences of each key by its value, key after key in their order.
void replaceAll(std::string& text, const std::map<std::string, std::string>& table);

/// Takes off double quotation marks that stand at both ends, the closing one not being escaped.
void stripQuotes(std::string& text);

} // namespace ZolFileManagement
