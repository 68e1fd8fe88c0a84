#pragma once

#include "Options.h"
#include "report/Report.h"

namespace zolbench
{

/// Measures all that is wanted, and tells on standard error how far it is.
Report run(const Options& options);

/// Prints which system calls the library makes in each row, counted on so many items.
void printCalls(const Options& options, std::size_t items);

} // namespace zolbench
