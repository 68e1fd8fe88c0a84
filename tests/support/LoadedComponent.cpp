#include "support/LoadedComponent.h"

#include <stdexcept>
#include <utility>

namespace zoltest
{

namespace
{

std::string escaped(const std::string& text)
{
    std::string result;
    for (const char character : text)
    {
        if (character == '&')
        {
            result += "&amp;";
        }
        else if (character == '<')
        {
            result += "&lt;";
        }
        else
        {
            result += character;
        }
    }
    return result;
}

} // namespace

std::string configurationFor(const std::string& internalRoot)
{
    return "<Configuration><ZolFileManagementComponent><ZolFileSystem><internal_root>" +
           escaped(internalRoot) +
           "</internal_root></ZolFileSystem></ZolFileManagementComponent></Configuration>";
}

LoadedComponent::LoadedComponent(const std::string& internalRoot)
{
    if (_library.init(host.accessor(), configurationFor(internalRoot)) != 0)
    {
        throw std::runtime_error("zolLCMinit failed");
    }
    _record = host.record();
    if (_record->start(ZolStateChangeReasonNormal) != 0)
    {
        throw std::runtime_error("start failed");
    }
    host.clear();
}

LoadedComponent::~LoadedComponent()
{
    unload();
}

const ZolOamSpiTransactionalResource_1& LoadedComponent::resource() const
{
    return resourceOf(*_record);
}

const ZolOamSpiManagedObject_3& LoadedComponent::objects() const
{
    return objectsOf(*_record);
}

std::unique_ptr<Transaction> LoadedComponent::join()
{
    return join(++_lastHandle);
}

std::unique_ptr<Transaction> LoadedComponent::join(unsigned long txHandle)
{
    auto transaction = std::make_unique<Transaction>(resource(), objects(), txHandle);
    if (transaction->join() != 0)
    {
        throw std::runtime_error("join failed");
    }
    return transaction;
}

void LoadedComponent::unload()
{
    if (auto* record = std::exchange(_record, nullptr))
    {
        record->stop(ZolStateChangeReasonNormal);
        _library.terminate();
        _library.unload();
    }
}

ZolMgmtSpiInterface_1* providedInterface(const ZolMgmtSpiComponentRecord& record, const std::string& name)
{
    for (ZolMgmtSpiInterface_1** entry = record.interfaces; *entry != nullptr; ++entry)
    {
        if ((*entry)->interfaceName == name)
        {
            return *entry;
        }
    }
    throw std::runtime_error("no interface " + name);
}

const ZolOamSpiTransactionalResource_1& resourceOf(const ZolMgmtSpiComponentRecord& record)
{
    return *reinterpret_cast<ZolOamSpiTransactionalResource_1*>(
        providedInterface(record, "ZolOamSpiTransactionalResource"));
}

const ZolOamSpiManagedObject_3& objectsOf(const ZolMgmtSpiComponentRecord& record)
{
    return *reinterpret_cast<ZolOamSpiManagedObject_3*>(providedInterface(record, "ZolOamSpiManagedObject"));
}

} // namespace zoltest
