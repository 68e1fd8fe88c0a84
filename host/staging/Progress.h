#pragma once

#include <cstddef>
#include <functional>

namespace zolhost
{

/// Called now and then in long work with the number of items done so far. It may throw to end the work.
using Progress = std::function<void(std::size_t done)>;

} // namespace zolhost
