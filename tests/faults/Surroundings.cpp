#include "Surroundings.h"

#include "FaultShim.h"
#include "support/LoadedComponent.h"

#include <algorithm>
#include <filesystem>
#include <mutex>
#include <stdexcept>
#include <sys/stat.h>
#include <utility>
#include <zol/common/LogSink.h>
#include <zol/common/LoggingWrapper.h>

namespace faults
{

namespace fs = std::filesystem;

using faultshim::Suspended;
using zoltest::FakeHost;

class Statements::Sink : public Zol::LogSink
{
public:
    void write(const Zol::LogRecord& record) override
    {
        const Suspended suspended;
        const std::scoped_lock lock(mutex);
        if (record.call == Zol::LogRecord::Call::Log)
        {
            texts.push_back("severity-" + std::to_string(record.number) + " " + std::string(record.text));
        }
        else if (record.call == Zol::LogRecord::Call::Trace && record.number == 0)
        {
            texts.push_back("plain " + std::string(record.text));
        }
    }

    std::mutex mutex; // protects the texts
    Texts texts;
};

Statements::Statements()
    : _sink(std::make_shared<Sink>())
{
    Zol::LoggingWrapper::instance().set_sink(_sink);
    Zol::LoggingWrapper::instance().set_level(8);
}

Statements::~Statements()
{
    Zol::LoggingWrapper::instance().set_sink(nullptr);
}

Texts Statements::take()
{
    const std::scoped_lock lock(_sink->mutex);
    return std::exchange(_sink->texts, {});
}

std::string ShieldedRepository::getFirstMoInstance(unsigned long txHandle, const std::string& classPath)
{
    const Suspended suspended;
    return FakeRepository::getFirstMoInstance(txHandle, classPath);
}

std::list<std::string> ShieldedRepository::getChildren(unsigned long txHandle, const std::string& parentDn,
                                                       const std::string& className)
{
    const Suspended suspended;
    return FakeRepository::getChildren(txHandle, parentDn, className);
}

void ShieldedRepository::getAttribute(unsigned long txHandle, const std::string& dn,
                                      const std::string& attributeName, ZolMoAttributeValueResult_3& result)
{
    const Suspended suspended;
    FakeRepository::getAttribute(txHandle, dn, attributeName, result);
}

namespace
{

// The host's tables with the shield before each function.

ZolReturnT registerParticipant(unsigned long txHandle, ZolOamSpiTransactionalResource_1* resource)
{
    const Suspended suspended;
    return FakeHost::live().registerParticipant(txHandle, resource);
}

ZolReturnT addMessage(uint32_t category, const char* text)
{
    const Suspended suspended;
    return FakeHost::live().addMessage(category, text);
}

ZolOamSpiTransaction_1 transactionTable = {"ZolOamSpiTransactionService", "ZolOamSpiTransaction", "1",
                                           registerParticipant};
ZolMgmtSpiThreadContext threadContextTable = {"ZolMgmtSpiThreadContextService", "ZolMgmtSpiThreadContext",
                                              "2", addMessage};

ZolReturnT getInterface(ZolMgmtSpiInterface_1 id, ZolMgmtSpiInterface_1** result)
{
    const Suspended suspended;
    const ZolReturnT code = FakeHost::live().getInterface(id, result);
    if (code == 0)
    {
        *result = id.interfaceName == std::string("ZolOamSpiTransaction")
                      ? reinterpret_cast<ZolMgmtSpiInterface_1*>(&transactionTable)
                      : reinterpret_cast<ZolMgmtSpiInterface_1*>(&threadContextTable);
    }
    return code;
}

ZolReturnT registerComponent(ZolMgmtSpiComponentRecord* record)
{
    const Suspended suspended;
    return FakeHost::live().registerComponent("1", record);
}

ZolReturnT unregisterComponent(ZolMgmtSpiComponentRecord* record)
{
    const Suspended suspended;
    return FakeHost::live().unregisterComponent("1", record);
}

void reserved() {}

ZolMgmtSpiInterfacePortal_1 portalTable = {
    "Host", "ZolMgmtSpiInterfacePortal", "1", getInterface, reserved, registerComponent, unregisterComponent};

ZolMgmtSpiInterfacePortal_1* getPortal(const char* version)
{
    return version == std::string("1") ? &portalTable : nullptr;
}

ZolMgmtSpiPortalAccessor accessorTable = {getPortal};

std::string describe(const std::string& path, const std::string& name)
{
    struct stat status
    {};
    if (lstat(path.c_str(), &status) != 0)
    {
        return "? " + name;
    }
    if (S_ISLNK(status.st_mode))
    {
        return "l " + name;
    }
    if (!S_ISDIR(status.st_mode))
    {
        return "f " + std::to_string(status.st_size) + " " + name;
    }
    std::string mode(5, '0');
    std::snprintf(mode.data(), mode.size(), "%04o", static_cast<unsigned int>(status.st_mode & 07777U));
    return "d " + mode.substr(0, 4) + " " + name;
}

} // namespace

Surroundings::Surroundings()
    : zolea("echo " + root())
{
    umask(022);
    build();
    if (init(zoltest::configurationFor(root())) != 0 || start() != 0)
    {
        throw std::runtime_error("the component doesn't start");
    }
    statements.take();
    host.clear();
}

Surroundings::~Surroundings() = default;

void Surroundings::clear() const
{
    for (const auto& entry : fs::directory_iterator(root()))
    {
        fs::remove_all(entry.path());
    }
}

void Surroundings::build() const
{
    clear();
    tree.file("d/a.txt", "12345");
    tree.file("d/b", "1");
    tree.directory("d/sub");
    tree.directory("e/x/y");
    tree.file("h/.filemnohousekeeping", "");
    tree.file("k/.filemnodirectorycreate", "");
    tree.link("l/dir", root("d"));
    tree.link("l/file", root("d/b"));
    tree.link("l/gone", root("none"));
    tree.file("q/a=b", "12");
    tree.directory("s");
    tree.chmod("s", 02755);
}

Texts Surroundings::snapshot() const
{
    Texts lines;
    for (const auto& entry : fs::recursive_directory_iterator(root()))
    {
        const std::string path = entry.path().string();
        lines.push_back(describe(path, path.substr(root().size() + 1)));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

ZolReturnT Surroundings::init(const std::string& config) const
{
    return _library.init(&accessorTable, config);
}

ZolReturnT Surroundings::start() const
{
    return host.record()->start(ZolStateChangeReasonNormal);
}

const ZolOamSpiTransactionalResource_1& Surroundings::resource() const
{
    return zoltest::resourceOf(*host.record());
}

const ZolOamSpiManagedObject_3& Surroundings::objects() const
{
    return zoltest::objectsOf(*host.record());
}

std::unique_ptr<zoltest::Transaction> Surroundings::transaction(unsigned long txHandle) const
{
    return std::make_unique<zoltest::Transaction>(resource(), objects(), txHandle);
}

} // namespace faults
