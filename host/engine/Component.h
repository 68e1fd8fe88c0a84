#pragma once

#include "engine/Portal.h"
#include "engine/SharedLibrary.h"

#include <filesystem>
#include <string>
#include <zol/spi/ZolFileManagement.h>
#include <zol/spi/ZolOamSpiManagedObject_3.h>
#include <zol/spi/ZolOamSpiTransactionalResource_1.h>

namespace zolhost
{

/// A component from the loading of its library to the unloading: the constructor loads, initialises and
/// starts it, the end stops, terminates and unloads it.
class Component
{
public:
    /// The library registers at the portal, and gets `configuration` as it is. Throws HostFailure.
    Component(const std::filesystem::path& library, const Portal& portal, const std::string& configuration);

    const ZolOamSpiTransactionalResource_1& resource() const { return _resource; }
    const ZolOamSpiManagedObject_3& objects() const { return _objects; }

private:
    class Initialised
    {
    public:
        Initialised(const SharedLibrary& library, const std::string& configuration);
        Initialised(const Initialised&) = delete;
        Initialised& operator=(const Initialised&) = delete;
        ~Initialised();

    private:
        zolLCMterminateT _terminate;
    };

    class Started
    {
    public:
        explicit Started(const ZolMgmtSpiComponentRecord& record);
        Started(const Started&) = delete;
        Started& operator=(const Started&) = delete;
        ~Started();

    private:
        const ZolMgmtSpiComponentRecord& _record;
    };

    // built in this order and undone in the reverse one
    SharedLibrary _library;
    Initialised _initialised;
    const ZolMgmtSpiComponentRecord& _record;
    const ZolOamSpiTransactionalResource_1& _resource;
    const ZolOamSpiManagedObject_3& _objects;
    Started _started;
};

} // namespace zolhost
