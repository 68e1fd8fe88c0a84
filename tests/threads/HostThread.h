#pragma once

#include "threads/Tally.h"

#include <atomic>
#include <random>
#include <string>
#include <zol/spi/ZolOamSpiManagedObject_3.h>
#include <zol/spi/ZolOamSpiTransactionalResource_1.h>

namespace threadtest
{

/// A thread of the host: opens transactions of its own and others that all threads share, and calls all
/// operations at random.
class HostThread
{
public:
    HostThread(const ZolOamSpiTransactionalResource_1& resource, const ZolOamSpiManagedObject_3& objects,
               unsigned long number, unsigned long seed);

    void run(const std::atomic<bool>& isOver);

    /// What the host does when the component registers as participant, on the thread that called it, unless
    /// it does it already.
    static void callBack();

    /// Ends what is still open among them when all threads have ended.
    static void finishShared(const ZolOamSpiTransactionalResource_1& resource);

    // For the one that watches.
    const char* current() const { return _current.load(std::memory_order_relaxed); }
    unsigned long long calls() const { return _calls.load(std::memory_order_relaxed); }

    const Tally& tally() const { return _tally; } ///< when it has ended

private:
    struct Handle
    {
        unsigned long number;
        State state;
    };

    void workInATransaction();
    void workOnAShared();
    void operate(Handle handle);
    void iterate(Handle handle);
    void readAttribute(Handle handle);
    void readAttributes(Handle handle);
    void act(Handle handle);
    void create(Handle handle);
    void end(unsigned long handle, unsigned long long iterator);

    /// Notes the code of the call, and which call it is as long as it lasts.
    template<class Call>
    ZolReturnT note(const char* operation, State state, const Call& call);

    bool chance(unsigned long oneIn) { return _random() % oneIn == 0; }
    std::string anyDirectoryDn();
    std::string anyFileDn();

    const ZolOamSpiTransactionalResource_1& _resource;
    const ZolOamSpiManagedObject_3& _objects;
    std::mt19937 _random;
    unsigned long _nextHandle;
    Tally _tally;
    bool _isInCallBack = false;
    std::atomic<const char*> _current = "nothing";
    std::atomic<unsigned long long> _calls = 0;
};

} // namespace threadtest
