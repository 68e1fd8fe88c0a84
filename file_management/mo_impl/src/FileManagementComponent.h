#pragma once

#include "Component.h"
#include "FileMMoImpl.h"
#include "FileManagementZoleaWrapper.h"
#include "ZolInterfaceBinders.h"

#include <string>

namespace ZolFileManagement
{

/// The component of the host: settles the internal root and offers the two tables behind which FileMMoImpl
/// works.
class FileManagementComponent : public Zol::Component<FileManagementComponent>
{
public:
    FileManagementComponent();
    ~FileManagementComponent() override;

    /// Reads the configuration. 0, or -1 if it can't be loaded. A configuration without an internal root is
    /// no failure: `start` asks the external command then.
    ZolReturnT initialize(const char* config) override;
    void terminate() override;

    /// Serves from now on if the internal root exists: 0, or otherwise -1.
    ZolReturnT start(ZolStateChangeReason reason) override;
    /// Always 0. Tears nothing down, so that transactions that are still open can end.
    ZolReturnT stop(ZolStateChangeReason reason) override;

    ZolReturnT loadConfiguration(const std::string& config);

    /// The host's interface of that identity, or null.
    ZolMgmtSpiInterface_1* getInterface(const ZolMgmtSpiInterface_1& id);

private:
    // In reverse order of their end: no call comes through a binder any more when what serves it goes.
    ZolFileManagementCommon::FileManagementZoleaWrapper _wrapper;
    FileMMoImpl _moImpl;
    std::string _internalRoot;
    Zol::TransactionalResource1Binder<FileMMoImpl> _resourceBinder;
    Zol::ManagedObject3Binder<FileMMoImpl> _objectBinder;
    bool _started = false;
};

} // namespace ZolFileManagement
