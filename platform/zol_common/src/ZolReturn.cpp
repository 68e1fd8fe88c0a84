#include <zol/common/ZolReturn.h>

namespace Zol
{

const char* ZolReturn::strerror(ZolReturnT code) noexcept
{
    switch (code)
    {
    case ZolReturnOk:
        return "Success";
    case ZolReturnFailure:
        return "Failed or refused";
    case ZolReturnNoSuch:
        return "No such object, attribute, action, transaction or iterator";
    case ZolReturnWrongParameters:
        return "Wrong type or number of action parameters";
    default:
        return "Unknown return code";
    }
}

} // namespace Zol
