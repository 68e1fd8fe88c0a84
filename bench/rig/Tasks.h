#pragma once

#include "ways/Task.h"

namespace zolbench
{

// What work is about, below a root. Nothing of it is on disk yet.

Task filesIn(const std::string& root, std::size_t number);       ///< in one directory
Task directoriesIn(const std::string& root, std::size_t number); ///< in one directory

/// Each directory is in the one before it, until the depth is reached.
Task chainsIn(const std::string& root, std::size_t number, std::size_t depth);

/// On nothing at all.
Task transactions(std::size_t number);

} // namespace zolbench
