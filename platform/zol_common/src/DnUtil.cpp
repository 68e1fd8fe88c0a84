#include <zol/common/DnUtil.h>

namespace Zol
{

std::string DnUtil::getClass(const std::string& dn)
{
    const std::size_t comma = dn.rfind(',');
    const std::size_t begin = comma == std::string::npos ? 0 : comma + 1;
    const std::size_t equals = dn.find('=', begin);
    return equals == std::string::npos ? std::string() : dn.substr(begin, equals - begin);
}

} // namespace Zol
