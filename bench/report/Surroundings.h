#pragma once

#include <string>

namespace zolbench
{

/// How much runs or wants to, on average of the last minute.
double loadAverage();

/// The kernel and the processors, in words.
std::string machine();

} // namespace zolbench
