#pragma once

#include <stdexcept>

namespace zolhost
{

/// The host can't come up: no library, no configuration or no root; `what()` says which.
class HostFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace zolhost
