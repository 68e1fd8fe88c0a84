#pragma once

#include <string>

namespace zolhost
{

/// The text of a configuration document that names this root directory. Throws HostFailure if no such
/// document can.
std::string configurationFor(const std::string& root);

/// The text of one that names none, so that the component asks its external command.
std::string configurationWithoutRoot();

} // namespace zolhost
