#include "FileMMoImpl.h"
#include "FileMTransaction.h"
#include "LogForms.h"

#include <Poco/ScopedLock.h>
#include <memory>

namespace ZolFileManagement
{

ZolReturnT FileMMoImpl::join(unsigned long txHandle)
{
    ZOL_ENTER_TRACE(" >> txHandle='%lu'", txHandle);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    const ZolReturnT result = _transactionInterface->registerParticipant(txHandle, _resourceInterface);
    if (result != 0)
    {
        ZOL_SEVERITY_LOG(3, "Failed to registerParticipant");
    }
    else
    {
        auto transaction = std::make_unique<FileMTransaction>(txHandle, *_portal);
        _transactions.insert({txHandle, transaction.get()});
        // a handle that is joined twice keeps its first worker, and the second one is lost on purpose
        static_cast<void>(transaction.release());
    }
    ZOL_EXIT_TRACE(" << ");
    return result;
}

ZolReturnT FileMMoImpl::prepare(unsigned long txHandle)
{
    ZOL_ENTER_TRACE(" >> txHandle='%lu'", txHandle);
    ZOL_EXIT_TRACE(" << ");
    return 0;
}

ZolReturnT FileMMoImpl::commit(unsigned long txHandle)
{
    ZOL_ENTER_TRACE(" >> txHandle='%lu'", txHandle);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    const ZolReturnT result = endWork(txHandle, &FileMTransaction::commit);
    ZOL_EXIT_TRACE(" << ");
    return result;
}

ZolReturnT FileMMoImpl::abort(unsigned long txHandle)
{
    ZOL_ENTER_TRACE(" >> txHandle='%lu'", txHandle);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    const ZolReturnT result = endWork(txHandle, &FileMTransaction::abort);
    ZOL_EXIT_TRACE(" << ");
    return result;
}

ZolReturnT FileMMoImpl::endWork(unsigned long txHandle, ZolReturnT (FileMTransaction::*end)() noexcept)
{
    FileMTransaction* transaction = findTransaction(txHandle);
    const ZolReturnT result = transaction != nullptr ? (transaction->*end)() : -2;
    _iterators.eraseAllOf(txHandle);
    return result;
}

ZolReturnT FileMMoImpl::finish(unsigned long txHandle)
{
    ZOL_ENTER_TRACE(" >> txHandle='%lu'", txHandle);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    ZolReturnT result = -2;
    if (FileMTransaction* transaction = findTransaction(txHandle); transaction != nullptr)
    {
        result = transaction->finish();
        delete transaction;
        _transactions.erase(txHandle);
    }
    ZOL_EXIT_TRACE(" << ");
    return result;
}

} // namespace ZolFileManagement
