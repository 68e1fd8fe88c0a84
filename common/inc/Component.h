#pragma once

#include <exception>
#include <vector>
#include <zol/spi/ZolMgmtSpiPortalAccessor.h>

namespace Zol
{

/// A component of the host: its record, its registration and the way from the library's entry points to the
/// one object of class T. The host calls entry points and callbacks one at a time, so there is no lock.
template<class T>
class Component
{
public:
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    virtual ZolReturnT initialize(const char* config) = 0;
    virtual void terminate() = 0;
    virtual ZolReturnT start(ZolStateChangeReason reason) = 0;
    virtual ZolReturnT stop(ZolStateChangeReason reason) = 0;
    virtual ~Component() = default;

    /// The object of the process, made by the first call. It goes when the library is unloaded.
    static T& instance()
    {
        static T theInstance;
        return theInstance;
    }

    /// What zolLCMinit does. A registration stays in place when the configuration can't be read.
    ZolReturnT init(ZolMgmtSpiPortalAccessor* accessor, const char* config)
    {
        _accessor = accessor;
        _portal = _accessor->getPortal("1");
        _portal3 = _accessor->getPortal("3");
        if (_portal == nullptr)
        {
            return -1;
        }

        _interfaceArray = _interfaces;
        _dependencyArray = _dependencies;
        _interfaceArray.push_back(nullptr);
        _dependencyArray.push_back(nullptr);
        _extraArray.push_back(nullptr);

        _record.flag = 0;
        _record.interfaces = _interfaceArray.data();
        _record.dependencies = _dependencyArray.data();
        _record.extraInterfaces = _extraArray.data();

        const ZolReturnT registered = _portal3 != nullptr ? _portal3->registerComponent(&_record)
                                                          : _portal->registerComponent(&_record);
        if (registered != 0)
        {
            return registered;
        }
        return initialize(config);
    }

    /// What zolLCMterminate does. What went through the portal of version "1" stays registered.
    void exit()
    {
        terminate();
        if (_portal3 != nullptr)
        {
            _portal3->unregisterComponent(&_record);
            _portal3 = nullptr;
        }
    }

protected:
    Component(const char* componentName, const char* interfaceName, const char* version)
    {
        _record.componentName = componentName;
        _record.interfaceName = interfaceName;
        _record.version = version;
        _record.start = startCallback;
        _record.stop = stopCallback;
    }

    ZolMgmtSpiPortalAccessor* _accessor = nullptr;
    ZolMgmtSpiInterfacePortal_1* _portal = nullptr;
    ZolMgmtSpiInterfacePortal_3* _portal3 = nullptr;
    ZolMgmtSpiComponentRecord _record{};
    std::vector<QenMgmtSpiInterface_1*> _interfaces;
    std::vector<QenMgmtSpiInterface_1*> _interfaceArray;
    std::vector<QenMgmtSpiInterface_1*> _dependencies;
    std::vector<QenMgmtSpiInterface_1*> _dependencyArray;
    std::vector<QenMgmtSpiInterface_1*> _extraArray;

private:
    static ZolReturnT startCallback(ZolStateChangeReason reason)
    {
        return changeState(&Component::start, reason);
    }
    static ZolReturnT stopCallback(ZolStateChangeReason reason)
    {
        return changeState(&Component::stop, reason);
    }

    static ZolReturnT changeState(ZolReturnT (Component::*change)(ZolStateChangeReason),
                                  ZolStateChangeReason reason)
    {
        try
        {
            Component& component = instance();
            return (component.*change)(reason);
        }
        catch (const std::exception&)
        {
            return -1;
        }
    }
};

} // namespace Zol
