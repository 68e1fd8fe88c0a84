#pragma once

#include "engine/OnlyOne.h"

#include <map>
#include <mutex>
#include <vector>
#include <zol/spi/ZolOamSpiTransaction_1.h>

namespace zolhost
{

/// Gives out transaction handles and notes who takes part. It calls no component, so any thread may call it
/// at any time, from within a component too.
class TransactionService : public OnlyOne<TransactionService>
{
public:
    using Participants = std::vector<ZolOamSpiTransactionalResource_1*>;

    /// The table that components get.
    static ZolOamSpiTransaction_1* table();

    /// A handle that was never given out before.
    unsigned long begin();

    /// Who has registered for the transaction, each once, in the order of registration; none if it has ended.
    Participants participants(unsigned long txHandle) const;

    /// From now on nobody can take part.
    void end(unsigned long txHandle);

private:
    static ZolReturnT registerParticipant(unsigned long txHandle, ZolOamSpiTransactionalResource_1* resource);
    ZolReturnT add(unsigned long txHandle, ZolOamSpiTransactionalResource_1* resource);

    mutable std::mutex _mutex; // protects all below
    unsigned long _lastHandle = 0;
    std::map<unsigned long, Participants> _transactions;
};

} // namespace zolhost
