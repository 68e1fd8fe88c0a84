#include "engine/Transaction.h"

#include "engine/CodeMeaning.h"

namespace zolhost
{

using Resource = ZolOamSpiTransactionalResource_1;

Transaction::Transaction(TransactionService& service, const Resource& component)
    : _service(service)
    , _handle(service.begin())
{
    const ZolReturnT code = component.join(_handle);
    _participants = _service.participants(_handle);
    if (code != ZolReturnOk)
    {
        _service.end(_handle);
        refuseByCode(Operation::Join, "", code);
    }
}

Transaction::~Transaction()
{
    abort();
}

void Transaction::commit()
{
    if (const ZolReturnT code = all(&Resource::prepare); code != ZolReturnOk)
    {
        abort();
        refuseByCode(Operation::Prepare, "", code);
    }
    const ZolReturnT code = all(&Resource::commit);
    finish();
    if (code != ZolReturnOk)
    {
        refuseByCode(Operation::Commit, "", code);
    }
}

void Transaction::abort() noexcept
{
    if (_open)
    {
        all(&Resource::abort);
        finish();
    }
}

ZolReturnT Transaction::all(Step step) const
{
    ZolReturnT result = ZolReturnOk;
    for (const Resource* const participant : _participants)
    {
        const ZolReturnT code = (participant->*step)(_handle);
        result = result == ZolReturnOk ? code : result;
    }
    return result;
}

void Transaction::finish()
{
    _open = false;
    all(&Resource::finish);
    _service.end(_handle);
}

} // namespace zolhost
