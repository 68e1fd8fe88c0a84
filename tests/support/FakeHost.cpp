#include "support/FakeHost.h"

#include <stdexcept>
#include <utility>

namespace zoltest
{

namespace
{

FakeHost* liveHost = nullptr;

std::string orDash(const char* text)
{
    return text == nullptr ? "-" : text;
}

ZolMgmtSpiInterfacePortal_1* getPortal(const char* version)
{
    return FakeHost::live().getPortal(version);
}

ZolReturnT getInterface(ZolMgmtSpiInterface_1 id, ZolMgmtSpiInterface_1** result)
{
    return FakeHost::live().getInterface(id, result);
}

void reserved()
{
    throw std::logic_error("the portal's reserved entry was called");
}

ZolReturnT registerComponentOn1(ZolMgmtSpiComponentRecord* record)
{
    return FakeHost::live().registerComponent("1", record);
}

ZolReturnT unregisterComponentOn1(ZolMgmtSpiComponentRecord* record)
{
    return FakeHost::live().unregisterComponent("1", record);
}

ZolReturnT registerComponentOn3(ZolMgmtSpiComponentRecord* record)
{
    return FakeHost::live().registerComponent("3", record);
}

ZolReturnT unregisterComponentOn3(ZolMgmtSpiComponentRecord* record)
{
    return FakeHost::live().unregisterComponent("3", record);
}

ZolReturnT registerParticipant(unsigned long txHandle, ZolOamSpiTransactionalResource_1* resource)
{
    return FakeHost::live().registerParticipant(txHandle, resource);
}

ZolReturnT addMessage(uint32_t category, const char* text)
{
    return FakeHost::live().addMessage(category, text);
}

ZolMgmtSpiPortalAccessor accessorTable = {getPortal};

ZolMgmtSpiInterfacePortal_1 portal1Table = {
    "FakeHost",           "ZolMgmtSpiInterfacePortal", "1", getInterface, reserved,
    registerComponentOn1, unregisterComponentOn1};

ZolMgmtSpiInterfacePortal_3 portal3Table = {
    "FakeHost",           "ZolMgmtSpiInterfacePortal", "3", getInterface, reserved,
    registerComponentOn3, unregisterComponentOn3};

ZolOamSpiTransaction_1 transactionTable = {"ZolOamSpiTransactionService", "ZolOamSpiTransaction", "1",
                                           registerParticipant};

ZolMgmtSpiThreadContext threadContextTable = {"ZolMgmtSpiThreadContextService", "ZolMgmtSpiThreadContext",
                                              "2", addMessage};

} // namespace

FakeHost::FakeHost()
{
    if (liveHost != nullptr)
    {
        throw std::logic_error("there is a FakeHost already");
    }
    liveHost = this;
}

FakeHost::~FakeHost()
{
    liveHost = nullptr;
}

FakeHost& FakeHost::live()
{
    if (liveHost == nullptr)
    {
        throw std::logic_error("the component called a host that is gone");
    }
    return *liveHost;
}

ZolMgmtSpiPortalAccessor* FakeHost::accessor()
{
    return &accessorTable;
}

ZolMgmtSpiInterfacePortal_1* FakeHost::portal1()
{
    return &portal1Table;
}

ZolOamSpiTransaction_1* FakeHost::transaction()
{
    return &transactionTable;
}

ZolMgmtSpiThreadContext* FakeHost::threadContext()
{
    return &threadContextTable;
}

std::vector<std::string> FakeHost::calls() const
{
    const std::scoped_lock lock(_mutex);
    return _calls;
}

ZolMgmtSpiComponentRecord* FakeHost::record() const
{
    const std::scoped_lock lock(_mutex);
    return _record;
}

std::vector<FakeHost::Participant> FakeHost::participants() const
{
    const std::scoped_lock lock(_mutex);
    return _participants;
}

std::vector<FakeHost::Message> FakeHost::fullMessages() const
{
    const std::scoped_lock lock(_mutex);
    return _messages;
}

std::vector<std::string> FakeHost::messages() const
{
    std::vector<std::string> texts;
    for (auto& message : fullMessages())
    {
        texts.push_back(std::move(message.text));
    }
    return texts;
}

void FakeHost::clear()
{
    const std::scoped_lock lock(_mutex);
    _calls.clear();
    _participants.clear();
    _messages.clear();
}

ZolMgmtSpiInterfacePortal_1* FakeHost::getPortal(const std::string& version)
{
    noteCall("getPortal " + version);
    if (version == "1" && offersPortal1)
    {
        return &portal1Table;
    }
    if (version == "3" && offersPortal3)
    {
        return &portal3Table;
    }
    return nullptr;
}

ZolReturnT FakeHost::getInterface(const ZolMgmtSpiInterface_1& id, ZolMgmtSpiInterface_1** result)
{
    const std::string service = orDash(id.componentName);
    const std::string interface = orDash(id.interfaceName);
    const std::string version = orDash(id.version);
    noteCall("getInterface " + service + "/" + interface + "/" + version);
    if (refusedInterfaces.contains(interface))
    {
        return ZolReturnFailure;
    }
    // the tables begin with the three fields of an identity
    if (service == "ZolOamSpiTransactionService" && interface == "ZolOamSpiTransaction" && version == "1")
    {
        *result = reinterpret_cast<ZolMgmtSpiInterface_1*>(&transactionTable);
        return ZolReturnOk;
    }
    if (service == "ZolMgmtSpiThreadContextService" && interface == "ZolMgmtSpiThreadContext" &&
        version == "2")
    {
        *result = reinterpret_cast<ZolMgmtSpiInterface_1*>(&threadContextTable);
        return ZolReturnOk;
    }
    return ZolReturnNoSuch;
}

ZolReturnT FakeHost::registerComponent(const char* portal, ZolMgmtSpiComponentRecord* record)
{
    noteCall(std::string("registerComponent on ") + portal);
    const std::scoped_lock lock(_mutex);
    if (registerComponentCode == 0)
    {
        _record = record;
    }
    return registerComponentCode;
}

ZolReturnT FakeHost::unregisterComponent(const char* portal, ZolMgmtSpiComponentRecord* record)
{
    noteCall(std::string("unregisterComponent on ") + portal);
    const std::scoped_lock lock(_mutex);
    if (record != _record)
    {
        return ZolReturnNoSuch;
    }
    _record = nullptr;
    return ZolReturnOk;
}

ZolReturnT FakeHost::registerParticipant(unsigned long txHandle, ZolOamSpiTransactionalResource_1* resource)
{
    noteCall("registerParticipant " + std::to_string(txHandle));
    {
        const std::scoped_lock lock(_mutex);
        _participants.push_back({txHandle, resource});
    }
    if (whileRegistering)
    {
        whileRegistering(txHandle);
    }
    return registerParticipantCode;
}

ZolReturnT FakeHost::addMessage(unsigned int category, const char* text)
{
    const std::scoped_lock lock(_mutex);
    _messages.push_back({category, text});
    return addMessageCode;
}

void FakeHost::noteCall(const std::string& call)
{
    {
        const std::scoped_lock lock(_mutex);
        _calls.push_back(call);
    }
    // without the lock: it may call the component, which may call this host again
    if (onCall)
    {
        onCall(call);
    }
}

} // namespace zoltest
