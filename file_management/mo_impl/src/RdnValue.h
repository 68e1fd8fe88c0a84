#pragma once

#include <string>

namespace ZolFileManagement
{

/// What stands behind the last equals sign; "IllegalDname", a value like any other, if there is none.
std::string getRdnValue(const std::string& dn);

} // namespace ZolFileManagement
