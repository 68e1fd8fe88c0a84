#pragma once

#include <zol/spi/ZolReturnT.h>

namespace Zol
{

/// Something that works within a transaction of the host.
class Transaction
{
public:
    /// Works in the transaction of that handle from now on; until then in none, as 0 says.
    void useTransaction(const unsigned long& txHandle) { _txHandle = txHandle; }

protected:
    Transaction() = default;
    ~Transaction() = default;

    /// The handle of the transaction.
    unsigned long txHandle() const { return _txHandle; }

private:
    unsigned long _txHandle = 0;
};

} // namespace Zol
