#pragma once

#include <string>

namespace Zol
{

/// What a DN tells by itself.
class DnUtil
{
public:
    /// Class of the last RDN of a DN; empty if that RDN has no equals sign.
    static std::string getClass(const std::string& dn);
};

} // namespace Zol
