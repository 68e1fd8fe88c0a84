#pragma once

#include "ways/Library.h"
#include "ways/Require.h"

namespace zolbench
{

/// A transaction in the library, from its join to its finish at the end of the object's life.
class LibraryTransaction
{
public:
    LibraryTransaction(const Library& library, unsigned long handle)
        : _resource(library.resource())
        , _handle(handle)
    {
        requireOk(_resource.join(_handle), "join");
    }
    LibraryTransaction(const LibraryTransaction&) = delete;
    LibraryTransaction& operator=(const LibraryTransaction&) = delete;
    ~LibraryTransaction() { _resource.finish(_handle); }

    unsigned long handle() const { return _handle; }
    void commit() const
    {
        requireOk(_resource.prepare(_handle), "prepare");
        requireOk(_resource.commit(_handle), "commit");
    }
    void abort() const { requireOk(_resource.abort(_handle), "abort"); }

private:
    const ZolOamSpiTransactionalResource_1& _resource;
    unsigned long _handle;
};

} // namespace zolbench
