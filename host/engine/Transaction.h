#pragma once

#include "engine/TransactionService.h"

#include <zol/spi/ZolOamSpiTransactionalResource_1.h>

namespace zolhost
{

/// One transaction: join, calls on objects, prepare, commit or abort, finish, each once and in this order. It
/// is aborted and finished at the end of its life, unless that was done.
class Transaction
{
public:
    /// Joins the component. Throws Refusal.
    Transaction(TransactionService& service, const ZolOamSpiTransactionalResource_1& component);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    unsigned long handle() const { return _handle; }

    /// Throws Refusal if a participant fails. The transaction is over in any case: nothing is done if one
    /// isn't prepared, and what was done stays if one fails to commit.
    void commit();

    void abort() noexcept;

private:
    using Step = ZolReturnT (*ZolOamSpiTransactionalResource_1::*)(unsigned long txHandle);

    /// Has all participants take the step, whatever the others answer. The first code that is not 0.
    ZolReturnT all(Step step) const;
    void finish();

    TransactionService& _service;
    unsigned long _handle;
    TransactionService::Participants _participants;
    bool _open = true;
};

} // namespace zolhost
