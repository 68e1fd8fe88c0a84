#pragma once

#include <string>
#include <string_view>

namespace zolbench
{

/// The place that a DN stands for below the root, with a slash behind a directory. For DNs without `.` and
/// `..` as values and without pairs of question marks.
std::string strictPathOf(const std::string& root, std::string_view dn);

/// How a file's name appears in a DN.
std::string strictFileValue(const char* name);

/// Whether a directory may have this name.
bool isStrictName(std::string_view name);

bool isMarker(std::string_view name);

} // namespace zolbench
