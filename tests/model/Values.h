#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zolmodel
{

/// Attribute values in one line, as the tests of the boundary write them.
std::string stringValue(const std::string& text);
std::string boolValue(bool value);
std::string intValue(std::uint64_t value);
std::string referencesValue(const std::vector<std::string>& dns);

struct ListedFile
{
    std::string name;
    std::string time;
    std::string type;
    std::uint64_t size;
};
std::string filesValue(const std::vector<ListedFile>& files);

} // namespace zolmodel
