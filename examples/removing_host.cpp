// A complete host in C++: loads the library, removes the files of a directory whose names match an extended
// regular expression, and takes the library's log lines into its own log.
//
//     removing_host LIBRARY ROOT DIRECTORY EXPRESSION
//
// ROOT is an absolute path.
#include <dlfcn.h>
#include <initializer_list>
#include <iostream>
#include <map>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <string_view>
#include <zol/common/LogSink.h>
#include <zol/common/LoggingWrapper.h>
#include <zol/spi/ZolFileManagement.h>
#include <zol/spi/ZolMgmtSpiThreadContext.h>
#include <zol/spi/ZolOamSpiManagedObject_3.h>
#include <zol/spi/ZolOamSpiTransaction_1.h>

namespace
{

void requireOk(ZolReturnT code, const std::string& what)
{
    if (code != ZolReturnOk)
    {
        throw std::runtime_error(what + " is refused");
    }
}

class HostLog : public Zol::LogSink
{
public:
    void write(const Zol::LogRecord& record) override
    {
        // each log comes a second time as a trace with file and line
        if (record.call == Zol::LogRecord::Call::Log)
        {
            const std::scoped_lock lock(_mutex);
            std::cerr << "log, severity " << record.number << ": " << record.text << '\n';
        }
    }

private:
    std::mutex _mutex; // any thread may write
};

// What the host offers. Tables are plain functions, so what they work on belongs to the process.

ZolMgmtSpiComponentRecord* registered = nullptr;
std::map<unsigned long, ZolOamSpiTransactionalResource_1*> participants;

ZolReturnT registerParticipant(unsigned long txHandle, ZolOamSpiTransactionalResource_1* resource)
{
    participants[txHandle] = resource;
    return ZolReturnOk;
}

ZolReturnT addMessage(uint32_t, const char* text)
{
    std::cerr << "the component says: " << text << '\n';
    return ZolReturnOk;
}

ZolOamSpiTransaction_1 transactionTable = {"ZolOamSpiTransactionService", "ZolOamSpiTransaction", "1",
                                           registerParticipant};
ZolMgmtSpiThreadContext threadContextTable = {"ZolMgmtSpiThreadContextService", "ZolMgmtSpiThreadContext",
                                              "2", addMessage};

ZolReturnT getInterface(ZolMgmtSpiInterface_1 id, ZolMgmtSpiInterface_1** result)
{
    // every table begins with its identity
    for (auto* const offer : {reinterpret_cast<ZolMgmtSpiInterface_1*>(&transactionTable),
                              reinterpret_cast<ZolMgmtSpiInterface_1*>(&threadContextTable)})
    {
        if (id.interfaceName != nullptr && std::string_view(id.interfaceName) == offer->interfaceName)
        {
            *result = offer;
            return ZolReturnOk;
        }
    }
    return ZolReturnNoSuch;
}

ZolReturnT registerComponent(ZolMgmtSpiComponentRecord* record)
{
    registered = record;
    return ZolReturnOk;
}

ZolReturnT unregisterComponent(ZolMgmtSpiComponentRecord*)
{
    registered = nullptr;
    return ZolReturnOk;
}

ZolMgmtSpiInterfacePortal_1* getPortal(const char* version)
{
    static ZolMgmtSpiInterfacePortal_1 first = {
        "RemovingHost",    "ZolMgmtSpiInterfacePortal", "1", getInterface, nullptr,
        registerComponent, unregisterComponent};
    static ZolMgmtSpiInterfacePortal_3 third = {
        "RemovingHost",    "ZolMgmtSpiInterfacePortal", "3", getInterface, nullptr,
        registerComponent, unregisterComponent};
    if (std::string_view(version) == first.version)
    {
        return &first;
    }
    return std::string_view(version) == third.version ? &third : nullptr;
}

/// The component, from loading to unloading. Its parts end in the opposite order of their beginning, also
/// when one of them fails to begin.
class Component
{
public:
    Component(const char* file, const std::string& configuration)
        : _library(dlopen(file, RTLD_NOW | RTLD_LOCAL), dlclose)
    {
        if (_library == nullptr)
        {
            throw std::runtime_error(std::string("the library can't be used: ") + dlerror());
        }
        _initialised = {function<zolLCMterminateT>("zolLCMterminate"), [](auto* terminate) { terminate(); }};
        requireOk(function<zolLCMinitT>("zolLCMinit")(&_accessor, configuration.c_str()), "zolLCMinit");
        requireOk(registered->start(ZolStateChangeReasonNormal), "start");
        _started = {registered, [](auto* record) { record->stop(ZolStateChangeReasonNormal); }};
    }

    /// One of the tables that it provides; good as long as this object.
    template<class Table>
    const Table& table(std::string_view interfaceName) const
    {
        for (ZolMgmtSpiInterface_1** entry = registered->interfaces; *entry != nullptr; ++entry)
        {
            if (interfaceName == (*entry)->interfaceName)
            {
                return *reinterpret_cast<const Table*>(*entry);
            }
        }
        throw std::runtime_error("the component doesn't provide " + std::string(interfaceName));
    }

private:
    template<class Pointer>
    using Held = std::unique_ptr<Pointer, void (*)(Pointer*)>;

    template<class Function>
    Function function(const char* name) const
    {
        void* const address = dlsym(_library.get(), name);
        if (address == nullptr)
        {
            throw std::runtime_error(std::string("the library has no function ") + name);
        }
        return reinterpret_cast<Function>(address);
    }

    std::unique_ptr<void, int (*)(void*)> _library;
    ZolMgmtSpiPortalAccessor _accessor = {getPortal};
    Held<void()> _initialised = {nullptr, nullptr};
    Held<ZolMgmtSpiComponentRecord> _started = {nullptr, nullptr};
};

/// Aborted at its end unless it was committed.
class Transaction
{
public:
    explicit Transaction(const Component& component)
        : _handle(++lastHandle)
    {
        requireOk(
            component.table<ZolOamSpiTransactionalResource_1>("ZolOamSpiTransactionalResource").join(_handle),
            "join");
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction()
    {
        auto* const participant = participants[_handle];
        if (!_ended)
        {
            participant->abort(_handle);
        }
        participant->finish(_handle);
        participants.erase(_handle);
    }

    unsigned long handle() const { return _handle; }

    void commit()
    {
        auto* const participant = participants[_handle];
        requireOk(participant->prepare(_handle), "prepare");
        _ended = true;
        requireOk(participant->commit(_handle), "commit");
    }

private:
    static inline unsigned long lastHandle = 0;
    unsigned long _handle;
    bool _ended = false;
};

unsigned long long countFiles(const Component& component, const std::string& dn)
{
    const auto& objects = component.table<ZolOamSpiManagedObject_3>("ZolOamSpiManagedObject");
    const Transaction transaction(component);
    unsigned long long count = 0;
    requireOk(objects.countMoChildren(transaction.handle(), dn.c_str(), "FileInformation", &count),
              "countMoChildren");
    return count;
}

void removeFiles(const Component& component, const std::string& dn, std::string expression)
{
    const auto& objects = component.table<ZolOamSpiManagedObject_3>("ZolOamSpiManagedObject");
    Transaction transaction(component);
    ZolMoAttributeValue_3 value;
    value.stringValue = expression.data();
    ZolMoNamedAttributeValueContainer_3 parameter = {"expression", attrTypeString, 1, &value};
    ZolMoNamedAttributeValueContainer_3* parameters[] = {&parameter, nullptr};
    ZolMoAttributeValueResult_3 result = {nullptr, nullptr};
    const ZolReturnT code =
        objects.action(transaction.handle(), dn.c_str(), "removeFile", parameters, &result);
    if (result.releaseCallback != nullptr)
    {
        result.releaseCallback(result.container);
    }
    requireOk(code, "removeFile");
    transaction.commit();
}

/// The component takes its host at its word: these names would lead elsewhere, and the path of the root
/// stands in a document.
void vet(const std::string& root, const std::string& directory)
{
    if (directory.find_first_not_of('.') == std::string::npos ||
        directory.find_first_of("/,?") != std::string::npos || root.find_first_of("<&") != std::string::npos)
    {
        throw std::runtime_error("the name of the directory or of the root can't be used here");
    }
}

void run(const char* library, const std::string& root, const std::string& directory,
         const std::string& expression)
{
    vet(root, directory);
    const std::string dn = "ManagedElement=1,SystemFunctions=1,FileM=1,FileGroup=" + directory;
    const Component component(
        library, "<Configuration><ZolFileManagementComponent><ZolFileSystem><internal_root>" + root +
                     "</internal_root></ZolFileSystem></ZolFileManagementComponent>"
                     "</Configuration>");
    const auto before = countFiles(component, dn);
    // the component puts "^" before and "$" behind it, which bind to the outer ones of several branches
    removeFiles(component, dn, "(" + expression + ")");
    std::cout << before - countFiles(component, dn) << " of " << before << " files removed\n";
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 5)
    {
        std::cerr << "usage: removing_host LIBRARY ROOT DIRECTORY EXPRESSION\n";
        return 2;
    }
    auto& log = Zol::LoggingWrapper::instance();
    log.set_sink(std::make_shared<HostLog>());
    int status = 0;
    try
    {
        run(argv[1], argv[2], argv[3], argv[4]);
    }
    catch (const std::exception& failure)
    {
        std::cerr << "removing_host: " << failure.what() << '\n';
        status = 1;
    }
    log.set_sink(nullptr);
    return status;
}
