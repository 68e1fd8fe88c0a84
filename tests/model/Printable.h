#pragma once

#include <string>

namespace zolmodel
{

/// Text with everything that a terminal wouldn't show as it is written as an escape.
std::string printable(const std::string& text);

} // namespace zolmodel
