#pragma once

#include "model/Location.h"

#include <string>

namespace zolmodel
{

/// Whether the last value of a DN may stand for something that exists.
bool isAcceptable(const std::string& dn);

/// Where the object of a DN lies on disk.
Location locationOf(const std::string& dn, const std::string& root);

std::string classOf(const std::string& dn);

/// The value of the last RDN, as the attributes that repeat it show it.
std::string lastValueOf(const std::string& dn);

} // namespace zolmodel
