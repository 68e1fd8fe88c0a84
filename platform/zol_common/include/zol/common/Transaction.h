#pragma once

#include <zol/spi/ZolReturnT.h>

namespace Zol
{

/// Something that works within a transaction of the host.
class Transaction
{
public:
    void useTransaction(const unsigned long& txHandle) { _txHandle = txHandle; }

protected:
    Transaction() = default;
    ~Transaction() = default;

    unsigned long txHandle() const { return _txHandle; }

private:
    unsigned long _txHandle = 0;
};

} // namespace Zol
