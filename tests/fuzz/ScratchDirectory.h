#pragma once

#include <string>

namespace zolfuzz
{

/// A folder of the process, in memory if the system has that, and gone with all in it at its end.
const std::string& scratchDirectory();

} // namespace zolfuzz
