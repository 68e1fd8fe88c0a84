#pragma once

#include <string>

namespace Zol
{

struct DnUtil
{
    static std::string getClass(const std::string& dn);
};

} // namespace Zol
