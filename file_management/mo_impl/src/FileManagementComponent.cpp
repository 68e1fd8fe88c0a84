#include "FileManagementComponent.h"

#include "FileManagementConfigHandler.h"
#include "LogForms.h"

#include <unistd.h>

namespace ZolFileManagement
{

namespace
{

constexpr ZolMgmtSpiInterface_1 transactionalResource{"ZolFileManagementComponent",
                                                      "ZolOamSpiTransactionalResource", "1"};
constexpr ZolMgmtSpiInterface_1 managedObject{"ZolFileManagementComponent", "ZolOamSpiManagedObject", "3"};

// The host's records hold pointers to non-const identities, so these can't be const.
ZolMgmtSpiInterface_1 transactionMaster{"ZolOamSpiTransactionService", "ZolOamSpiTransactionMaster", "1"};
ZolMgmtSpiInterface_1 transaction{"ZolOamSpiTransactionService", "ZolOamSpiTransaction", "1"};
ZolMgmtSpiInterface_1 log{nullptr, "ZolMwSpiLog", "1"};
ZolMgmtSpiInterface_1 trace{nullptr, "QenMwSpiTrace", nullptr};
ZolMgmtSpiInterface_1 threadContext{"ZolMgmtSpiThreadContextService", "ZolMgmtSpiThreadContext", "2"};

} // namespace

FileManagementComponent::FileManagementComponent()
    : Component("ZolFileManagementComponent", "ZolMgmtSpiComponent", "1")
    , _resourceBinder(transactionalResource, _moImpl)
    , _objectBinder(managedObject, _moImpl)
{
    _dependencies = {&transactionMaster, &transaction, &log, &trace, &threadContext};
    _interfaces = {reinterpret_cast<QenMgmtSpiInterface_1*>(_resourceBinder.table()),
                   reinterpret_cast<QenMgmtSpiInterface_1*>(_objectBinder.table())};
}

FileManagementComponent::~FileManagementComponent() = default;

ZolReturnT FileManagementComponent::initialize(const char* config)
{
    ZOL_ENTER_TRACE(" >> ");
    ZOL_PLAIN_TRACE("[libzol_file_management.so] -- zolLCMinit ...  \n");
    const ZolReturnT result = loadConfiguration(config);
    if (result != 0)
    {
        ZOL_SEVERITY_LOG(4, "Could not load the configuration for FileManagementComponent Component.");
        return result;
    }
    ZOL_EXIT_TRACE(" << ");
    return 0;
}

ZolReturnT FileManagementComponent::loadConfiguration(const std::string& config)
{
    ZOL_ENTER_TRACE(" >> %s", config.c_str());
    ZolFileManagementCommon::FileManagementConfigHandler handler(_record.componentName);
    ZolReturnT result = 0;
    if (const int code = handler.load(config); code != 0)
    {
        ZOL_SEVERITY_LOG(4, "Failed to load components configuration! (%d)", code);
        result = -1;
    }
    else
    {
        ZOL_PLAIN_TRACE("FileManagementComponent configuration read");
    }
    handler.getInternalRoot(_internalRoot);
    handler.unload();
    ZOL_EXIT_TRACE(" << %d", result);
    return result;
}

ZolReturnT FileManagementComponent::start(ZolStateChangeReason reason)
{
    ZOL_ENTER_TRACE(" >> Starting FileManagement service. Reason: %d", static_cast<int>(reason));
    if (_internalRoot.empty())
    {
        try
        {
            _wrapper.readConfiguration(_internalRoot);
        }
        catch (const std::exception& failure)
        {
            ZOL_SEVERITY_LOG(3, "ZOLEA readConfiguration failed: %s", failure.what());
            return -1;
        }
    }

    if (::access(_internalRoot.c_str(), F_OK) != 0)
    {
        ZOL_SEVERITY_LOG(3, "The File Management internal root path (%s) does not exist.",
                         _internalRoot.c_str());
        ZOL_EXIT_TRACE(" << ");
        return -1;
    }

    // a path without a slash has no split point and goes on as both parts
    const auto slash = _internalRoot.rfind('/');
    const std::string directoryPart = _internalRoot.substr(0, slash);
    const std::string leafPart = _internalRoot.substr(slash + 1);
    auto* transactionInterface = reinterpret_cast<ZolOamSpiTransaction_1*>(getInterface(transaction));
    _moImpl.initialize(directoryPart, leafPart, _portal, transactionInterface, _resourceBinder.table());

    _started = true;
    ZOL_EXIT_TRACE(" << ");
    return 0;
}

ZolReturnT FileManagementComponent::stop(ZolStateChangeReason reason)
{
    ZOL_ENTER_TRACE(" >> Stopping FileManagement service with reason: %d", static_cast<int>(reason));
    if (!_started)
    {
        ZOL_SEVERITY_LOG(4, "FileManagement service is already stopped.");
    }
    _started = false;
    ZOL_EXIT_TRACE(" << ");
    return 0;
}

void FileManagementComponent::terminate()
{
    ZOL_ENTER_TRACE(" >> ");
    ZOL_EXIT_TRACE(" << ");
}

ZolMgmtSpiInterface_1* FileManagementComponent::getInterface(const ZolMgmtSpiInterface_1& id)
{
    ZOL_ENTER_TRACE(" >> Try to get interface %s", id.interfaceName);
    ZolMgmtSpiInterface_1* found = nullptr;
    if (_portal->getInterface(id, &found) != 0)
    {
        found = nullptr;
    }
    ZOL_EXIT_TRACE(" << ");
    return found;
}

} // namespace ZolFileManagement
