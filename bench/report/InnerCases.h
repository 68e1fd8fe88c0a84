#pragma once

#include "report/Report.h"

namespace zolbench
{

/// From the JSON that zol_bench_inner writes. Of cases that were repeated the medians alone.
std::vector<InnerCase> readInnerCases(const std::filesystem::path& file);

} // namespace zolbench
