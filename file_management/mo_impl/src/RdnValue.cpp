#include "RdnValue.h"

namespace ZolFileManagement
{

std::string getRdnValue(const std::string& dn)
{
    const auto equals = dn.rfind('=');
    return equals == std::string::npos ? "IllegalDname" : dn.substr(equals + 1);
}

} // namespace ZolFileManagement
