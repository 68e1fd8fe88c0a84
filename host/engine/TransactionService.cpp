#include "engine/TransactionService.h"

#include <algorithm>
#include <exception>

namespace zolhost
{

ZolOamSpiTransaction_1* TransactionService::table()
{
    static ZolOamSpiTransaction_1 transaction = {"ZolOamSpiTransactionService", "ZolOamSpiTransaction", "1",
                                                 registerParticipant};
    return &transaction;
}

unsigned long TransactionService::begin()
{
    const std::scoped_lock lock(_mutex);
    _transactions[++_lastHandle] = {};
    return _lastHandle;
}

TransactionService::Participants TransactionService::participants(unsigned long txHandle) const
{
    const std::scoped_lock lock(_mutex);
    const auto found = _transactions.find(txHandle);
    return found == _transactions.end() ? Participants{} : found->second;
}

void TransactionService::end(unsigned long txHandle)
{
    const std::scoped_lock lock(_mutex);
    _transactions.erase(txHandle);
}

ZolReturnT TransactionService::registerParticipant(unsigned long txHandle,
                                                   ZolOamSpiTransactionalResource_1* resource)
{
    try
    {
        return only() == nullptr ? ZolReturnFailure : only()->add(txHandle, resource);
    }
    catch (const std::exception&)
    {
        return ZolReturnFailure;
    }
}

ZolReturnT TransactionService::add(unsigned long txHandle, ZolOamSpiTransactionalResource_1* resource)
{
    const std::scoped_lock lock(_mutex);
    const auto found = _transactions.find(txHandle);
    if (found == _transactions.end())
    {
        return ZolReturnNoSuch;
    }
    if (std::ranges::find(found->second, resource) == found->second.end())
    {
        found->second.push_back(resource);
    }
    return ZolReturnOk;
}

} // namespace zolhost
