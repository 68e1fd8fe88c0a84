#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zolhost::filem
{

/// Printable texts side by side, read downwards, on so many columns of a terminal and at most so many lines.
/// A last line tells how many have no place.
std::string inColumns(const std::vector<std::string>& texts, std::size_t columns, std::size_t lines);

} // namespace zolhost::filem
