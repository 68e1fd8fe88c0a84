#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace zolbench
{

/// Puts each table in the place of what stands between the lines `<!-- table NAME -->` and `<!-- end NAME
/// -->` of a document. Throws if a table has no such place.
void writeTables(const std::filesystem::path& document, const std::map<std::string, std::string>& tables);

} // namespace zolbench
