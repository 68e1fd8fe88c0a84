#include "engine/Component.h"

#include "engine/HostFailure.h"

#include <string_view>

namespace zolhost
{

namespace
{

const ZolMgmtSpiComponentRecord& lastRegistered(const Portal& portal)
{
    const auto components = portal.components();
    if (components.empty())
    {
        throw HostFailure("the library registers no component");
    }
    return *components.back();
}

template<class Table>
const Table& provided(const ZolMgmtSpiComponentRecord& record, const char* interfaceName, const char* version)
{
    for (ZolMgmtSpiInterface_1** entry = record.interfaces; *entry != nullptr; ++entry)
    {
        if (std::string_view((*entry)->interfaceName) == interfaceName &&
            std::string_view((*entry)->version) == version)
        {
            // every table begins with its identity
            return *reinterpret_cast<const Table*>(*entry);
        }
    }
    throw HostFailure(std::string("the component ") + record.componentName + " doesn't provide " +
                      interfaceName + " version " + version);
}

} // namespace

Component::Component(const std::filesystem::path& library, const Portal& portal,
                     const std::string& configuration)
    : _library(library)
    , _initialised(_library, configuration)
    , _record(lastRegistered(portal))
    , _resource(provided<ZolOamSpiTransactionalResource_1>(_record, "ZolOamSpiTransactionalResource", "1"))
    , _objects(provided<ZolOamSpiManagedObject_3>(_record, "ZolOamSpiManagedObject", "3"))
    , _started(_record)
{}

Component::Initialised::Initialised(const SharedLibrary& library, const std::string& configuration)
    : _terminate(library.function<zolLCMterminateT>("zolLCMterminate"))
{
    const auto initialise = library.function<zolLCMinitT>("zolLCMinit");
    if (initialise(Portal::accessor(), configuration.c_str()) != ZolReturnOk)
    {
        // it may have registered before it failed
        _terminate();
        throw HostFailure("the component can't read its configuration");
    }
}

Component::Initialised::~Initialised()
{
    _terminate();
}

Component::Started::Started(const ZolMgmtSpiComponentRecord& record)
    : _record(record)
{
    if (_record.start(ZolStateChangeReasonNormal) != ZolReturnOk)
    {
        throw HostFailure(
            "the component doesn't start: the root of the file tree isn't known or isn't there");
    }
}

Component::Started::~Started()
{
    _record.stop(ZolStateChangeReasonNormal);
}

} // namespace zolhost
