#pragma once

#include "support/FakeHost.h"
#include "support/LoadedLibrary.h"
#include "support/Transaction.h"

#include <memory>
#include <string>

namespace zoltest
{

/// The text of a configuration document that names this internal root.
std::string configurationFor(const std::string& internalRoot);

/// The component as a host runs it: loaded, configured for an internal root and started. Its end unloads it.
class LoadedComponent
{
public:
    /// Throws if any step gives a code other than 0.
    explicit LoadedComponent(const std::string& internalRoot);
    LoadedComponent(const LoadedComponent&) = delete;
    LoadedComponent& operator=(const LoadedComponent&) = delete;
    ~LoadedComponent();

    FakeHost host;

    const ZolOamSpiTransactionalResource_1& resource() const;
    const ZolOamSpiManagedObject_3& objects() const;

    /// A joined transaction, with a handle of its own unless one is given. It must end before the component
    /// is unloaded. Throws if it can't be joined.
    std::unique_ptr<Transaction> join();
    std::unique_ptr<Transaction> join(unsigned long txHandle);

    /// Stops, terminates and unloads.
    void unload();

private:
    LoadedLibrary _library;
    ZolMgmtSpiComponentRecord* _record = nullptr;
    unsigned long _lastHandle = 1000;
};

/// The table with that interfaceName among those that a registered record provides. Throws if there is none.
ZolMgmtSpiInterface_1* providedInterface(const ZolMgmtSpiComponentRecord& record, const std::string& name);
const ZolOamSpiTransactionalResource_1& resourceOf(const ZolMgmtSpiComponentRecord& record);
const ZolOamSpiManagedObject_3& objectsOf(const ZolMgmtSpiComponentRecord& record);

} // namespace zoltest
