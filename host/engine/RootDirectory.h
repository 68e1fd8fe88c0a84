#pragma once

#include "engine/Host.h"

#include <string>

namespace zolhost
{

/// The root directory of the tree that the host's component shows: what the configuration that it got names
/// or else what it says of itself. Absolute, without a closing slash. Throws HostFailure or Refusal.
std::string rootDirectoryOf(Host& host, const std::string& configuration);

} // namespace zolhost
