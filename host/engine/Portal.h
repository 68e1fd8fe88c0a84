#pragma once

#include "engine/OnlyOne.h"

#include <mutex>
#include <vector>
#include <zol/spi/ZolMgmtSpiPortalAccessor.h>

namespace zolhost
{

/// Where components find the host's interfaces and register: one set of functions behind the portals of
/// version "1" and "3".
class Portal : public OnlyOne<Portal>
{
public:
    using Tables = std::vector<ZolMgmtSpiInterface_1*>;

    /// Offers these tables, which begin with their identities and outlive the portal.
    explicit Portal(Tables offers);

    /// What a component's entry point is called with.
    static ZolMgmtSpiPortalAccessor* accessor();

    /// The components that are registered, in the order of registration.
    std::vector<ZolMgmtSpiComponentRecord*> components() const;

private:
    static ZolMgmtSpiInterfacePortal_1* getPortal(const char* version);
    static ZolReturnT getInterface(ZolMgmtSpiInterface_1 id, ZolMgmtSpiInterface_1** result);
    static void reserved();
    static ZolReturnT registerComponent(ZolMgmtSpiComponentRecord* record);
    static ZolReturnT unregisterComponent(ZolMgmtSpiComponentRecord* record);

    const Tables _offers;
    mutable std::mutex _mutex; // protects all below
    std::vector<ZolMgmtSpiComponentRecord*> _components;
};

} // namespace zolhost
