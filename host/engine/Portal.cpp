#include "engine/Portal.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <utility>

namespace zolhost
{

namespace
{

bool same(const char* left, const char* right)
{
    return left != nullptr && right != nullptr && std::string_view(left) == right;
}

} // namespace

Portal::Portal(Tables offers)
    : _offers(std::move(offers))
{}

ZolMgmtSpiPortalAccessor* Portal::accessor()
{
    static ZolMgmtSpiPortalAccessor accessor = {getPortal};
    return &accessor;
}

std::vector<ZolMgmtSpiComponentRecord*> Portal::components() const
{
    const std::scoped_lock lock(_mutex);
    return _components;
}

ZolMgmtSpiInterfacePortal_1* Portal::getPortal(const char* version)
{
    static ZolMgmtSpiInterfacePortal_1 portal1 = {
        "ZolHost",         "ZolMgmtSpiInterfacePortal", "1", getInterface, reserved,
        registerComponent, unregisterComponent};
    static ZolMgmtSpiInterfacePortal_3 portal3 = {
        "ZolHost",         "ZolMgmtSpiInterfacePortal", "3", getInterface, reserved,
        registerComponent, unregisterComponent};
    for (ZolMgmtSpiInterfacePortal_1* const portal : {&portal1, &portal3})
    {
        if (same(portal->version, version))
        {
            return portal;
        }
    }
    return nullptr;
}

ZolReturnT Portal::getInterface(ZolMgmtSpiInterface_1 id, ZolMgmtSpiInterface_1** result)
{
    if (only() == nullptr)
    {
        return ZolReturnFailure;
    }
    for (ZolMgmtSpiInterface_1* const offer : only()->_offers)
    {
        if (same(offer->componentName, id.componentName) && same(offer->interfaceName, id.interfaceName) &&
            same(offer->version, id.version))
        {
            *result = offer;
            return ZolReturnOk;
        }
    }
    return ZolReturnNoSuch;
}

void Portal::reserved() {}

ZolReturnT Portal::registerComponent(ZolMgmtSpiComponentRecord* record)
{
    try
    {
        if (only() == nullptr || record == nullptr)
        {
            return ZolReturnFailure;
        }
        const std::scoped_lock lock(only()->_mutex);
        only()->_components.push_back(record);
        return ZolReturnOk;
    }
    catch (const std::exception&)
    {
        return ZolReturnFailure;
    }
}

ZolReturnT Portal::unregisterComponent(ZolMgmtSpiComponentRecord* record)
{
    if (only() == nullptr)
    {
        return ZolReturnFailure;
    }
    const std::scoped_lock lock(only()->_mutex);
    return std::erase(only()->_components, record) > 0 ? ZolReturnOk : ZolReturnNoSuch;
}

} // namespace zolhost
