#pragma once

#include "IteratorRegistry.h"

#include <Poco/Mutex.h>
#include <map>
#include <string>
#include <zol/spi/ZolMgmtSpiInterfacePortal_1.h>
#include <zol/spi/ZolOamSpiManagedObject_3.h>
#include <zol/spi/ZolOamSpiTransaction_1.h>

namespace ZolFileManagement
{

class FileMTransaction;

/// The one object behind both provided interfaces: knows which worker serves a transaction or an iterator and
/// lets one call at a time through to the workers. It knows nothing of directories and names.
///
/// Any thread may call any operation at any time, except `initialize`, which comes before them. The lock is
/// held for the full length of an operation, in calls to the disk and back into the host too; prepare,
/// setMoAttribute and finalizeMoIterator touch nothing and take none. Exceptions go up to the binder.
class FileMMoImpl
{
public:
    FileMMoImpl();
    FileMMoImpl(const FileMMoImpl&) = delete;
    FileMMoImpl& operator=(const FileMMoImpl&) = delete;
    /// Deletes the workers that remain. Nothing of theirs is committed.
    ~FileMMoImpl();

    void initialize(const std::string& directoryPart, const std::string& leafPart,
                    ZolMgmtSpiInterfacePortal_1* portal, ZolOamSpiTransaction_1* transaction,
                    ZolOamSpiTransactionalResource_1* resource);

    // TransactionRegistry.cpp: the life of a transaction
    ZolReturnT join(unsigned long txHandle);
    ZolReturnT prepare(unsigned long txHandle);
    ZolReturnT commit(unsigned long txHandle);
    ZolReturnT abort(unsigned long txHandle);
    ZolReturnT finish(unsigned long txHandle);

    // ManagedObjectOperations.cpp: what goes on to the worker; a writing operation gives -1 for an unknown
    // handle, a reading one -2
    ZolReturnT setMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                              const ZolMoAttributeValueContainer_3* value);
    ZolReturnT getMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                              ZolMoAttributeValueResult_3* result);
    ZolReturnT getMoAttributes(unsigned long txHandle, const char* dn, const char** attributeNames,
                               ZolMoAttributeValuesResult_3* result);
    ZolReturnT newMoIterator(unsigned long txHandle, const char* parentDn, const char* className,
                             unsigned long long* iteratorId);
    ZolReturnT nextMo(unsigned long long iteratorId, char** name);
    ZolReturnT createMo(unsigned long txHandle, const char* parentDn, const char* className,
                        const char* keyAttribute, const char* keyValue,
                        ZolMoNamedAttributeValueContainer_3** attributes);
    ZolReturnT deleteMo(unsigned long txHandle, const char* dn);
    ZolReturnT action(unsigned long txHandle, const char* dn, const char* actionName,
                      ZolMoNamedAttributeValueContainer_3** parameters, ZolMoAttributeValueResult_3* result);
    ZolReturnT finalizeMoIterator(unsigned long long iteratorId);
    ZolReturnT existsMo(unsigned long txHandle, const char* dn, bool* exists);
    ZolReturnT countMoChildren(unsigned long txHandle, const char* dn, const char* className,
                               unsigned long long* count);

private:
    FileMTransaction* findTransaction(unsigned long txHandle) const;
    ZolReturnT endWork(unsigned long txHandle, ZolReturnT (FileMTransaction::*end)() noexcept);

    // the host's and the component's tables: constant after initialize, not owned
    ZolOamSpiTransaction_1* _transactionInterface = nullptr;
    ZolOamSpiTransactionalResource_1* _resourceInterface = nullptr;

    // protected by _mutex, the workers included
    std::map<unsigned long, FileMTransaction*> _transactions; // owns the workers
    IteratorRegistry _iterators;                              // an entry can outlive its transaction

    Poco::Mutex _mutex; // recursive: the host may call back from within registerParticipant

    ZolMgmtSpiInterfacePortal_1* _portal = nullptr; // constant after initialize, not owned
};

} // namespace ZolFileManagement
