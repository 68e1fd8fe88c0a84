#pragma once

#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <vector>
#include <zol/spi/ZolFileManagement.h>
#include <zol/spi/ZolMgmtSpiThreadContext.h>
#include <zol/spi/ZolOamSpiTransaction_1.h>

namespace zoltest
{

/// The host's side of the boundary, with its faults at hand. At most one object lives at a time; it must
/// outlive the component that it serves. What a test sets, it sets before the component's calls.
class FakeHost
{
public:
    FakeHost();
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;
    ~FakeHost();

    ZolMgmtSpiPortalAccessor* accessor();
    ZolMgmtSpiInterfacePortal_1* portal1();
    ZolOamSpiTransaction_1* transaction();
    ZolMgmtSpiThreadContext* threadContext();

    // What it offers and answers.
    bool offersPortal1 = true;
    bool offersPortal3 = true;
    std::set<std::string> refusedInterfaces; ///< by interfaceName; the result pointer then stays as it is
    ZolReturnT registerComponentCode = 0;
    ZolReturnT registerParticipantCode = 0;
    ZolReturnT addMessageCode = 0; ///< the message is kept all the same
    /// Called at every call but addMessage, with its text as `calls` gives it, before anything else is done.
    std::function<void(const std::string&)> onCall;
    /// Called with the handle from within registerParticipant, before it returns.
    std::function<void(unsigned long)> whileRegistering;

    // What it was asked.
    struct Participant
    {
        unsigned long txHandle;
        ZolOamSpiTransactionalResource_1* resource;
    };
    struct Message
    {
        unsigned int category;
        std::string text;
    };

    /// Every call in its order: "getPortal 1", "registerComponent on 3", "unregisterComponent on 3",
    /// "getInterface service/interface/version" with a dash for a null pointer, "registerParticipant 7".
    std::vector<std::string> calls() const;
    /// The record of the last registerComponent, until it is unregistered.
    ZolMgmtSpiComponentRecord* record() const;
    std::vector<Participant> participants() const;
    /// The texts of the messages, in their order.
    std::vector<std::string> messages() const;
    std::vector<Message> fullMessages() const;
    void clear(); ///< forgets calls, participants and messages

    // For the tables alone.
    static FakeHost& live();
    ZolMgmtSpiInterfacePortal_1* getPortal(const std::string& version);
    ZolReturnT getInterface(const ZolMgmtSpiInterface_1& id, ZolMgmtSpiInterface_1** result);
    ZolReturnT registerComponent(const char* portal, ZolMgmtSpiComponentRecord* record);
    ZolReturnT unregisterComponent(const char* portal, ZolMgmtSpiComponentRecord* record);
    ZolReturnT registerParticipant(unsigned long txHandle, ZolOamSpiTransactionalResource_1* resource);
    ZolReturnT addMessage(unsigned int category, const char* text);

private:
    void noteCall(const std::string& call);

    mutable std::mutex _mutex; // protects all below
    std::vector<std::string> _calls;
    ZolMgmtSpiComponentRecord* _record = nullptr;
    std::vector<Participant> _participants;
    std::vector<Message> _messages;
};

} // namespace zoltest
