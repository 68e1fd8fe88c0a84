#include "FileMMoImpl.h"
#include "FileMTransaction.h"
#include "LogForms.h"

#include <Poco/ScopedLock.h>
#include <zol/common/ZolReturn.h>

namespace ZolFileManagement
{

ZolReturnT FileMMoImpl::setMoAttribute(unsigned long, const char*, const char*,
                                       const ZolMoAttributeValueContainer_3*)
{
    return -1;
}

ZolReturnT FileMMoImpl::getMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                                       ZolMoAttributeValueResult_3* result)
{
    ZOL_ENTER_TRACE(" >> '%lu', '%s', '%s'", txHandle, dn, attributeName);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    result->releaseCallback = nullptr;
    FileMTransaction* transaction = findTransaction(txHandle);
    const ZolReturnT code =
        transaction != nullptr ? transaction->getAttribute(dn, attributeName, *result) : -2;
    ZOL_EXIT_TRACE(" << Retval: %s", Zol::ZolReturn::strerror(code));
    return code;
}

ZolReturnT FileMMoImpl::getMoAttributes(unsigned long txHandle, const char* dn, const char** attributeNames,
                                        ZolMoAttributeValuesResult_3* result)
{
    ZOL_ENTER_TRACE(" >> '%lu', '%s',", txHandle, dn);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    result->releaseCallback = nullptr;
    FileMTransaction* transaction = findTransaction(txHandle);
    const ZolReturnT code =
        transaction != nullptr ? transaction->getAttributes(dn, attributeNames, *result) : -2;
    ZOL_EXIT_TRACE(" << Retval: %s", Zol::ZolReturn::strerror(code));
    return code;
}

ZolReturnT FileMMoImpl::newMoIterator(unsigned long txHandle, const char* parentDn, const char* className,
                                      unsigned long long* iteratorId)
{
    ZOL_ENTER_TRACE(" >> '%lu', '%s', '%s'", txHandle, parentDn, className);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    FileMTransaction* transaction = findTransaction(txHandle);
    const ZolReturnT code =
        transaction != nullptr ? transaction->newIterator(parentDn, className, iteratorId) : -2;
    if (code == 0)
    {
        _iterators.insert(*iteratorId, txHandle);
    }
    ZOL_EXIT_TRACE(" << ");
    return code;
}

ZolReturnT FileMMoImpl::nextMo(unsigned long long iteratorId, char** name)
{
    ZOL_ENTER_TRACE(" >> ");
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    ZOL_ENTER_TRACE(" >> '%llu'", iteratorId);
    *name = nullptr;
    ZolReturnT code = -2;
    if (const unsigned long* txHandle = _iterators.find(iteratorId); txHandle != nullptr)
    {
        if (FileMTransaction* transaction = findTransaction(*txHandle); transaction != nullptr)
        {
            // a failed step looks like the end of the iteration: the host goes by the name alone
            transaction->next(iteratorId, name);
            code = 0;
        }
        else
        {
            ZOL_PLAIN_TRACE("Call failed: Iterator has no matching transaction");
            code = -1;
        }
    }
    ZOL_EXIT_TRACE(" << ");
    return code;
}

ZolReturnT FileMMoImpl::createMo(unsigned long txHandle, const char* parentDn, const char* className,
                                 const char* keyAttribute, const char* keyValue,
                                 ZolMoNamedAttributeValueContainer_3**)
{
    ZOL_ENTER_TRACE(" >> '%lu', '%s', '%s', '%s', '%s'", txHandle, parentDn, className, keyAttribute,
                    keyValue);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    FileMTransaction* transaction = findTransaction(txHandle);
    const ZolReturnT code =
        transaction != nullptr ? transaction->create(parentDn, className, keyAttribute, keyValue) : -1;
    ZOL_EXIT_TRACE(" << Retval: %s", Zol::ZolReturn::strerror(code));
    return code;
}

ZolReturnT FileMMoImpl::deleteMo(unsigned long txHandle, const char* dn)
{
    ZOL_ENTER_TRACE(" >> '%lu', '%s'", txHandle, dn);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    FileMTransaction* transaction = findTransaction(txHandle);
    const ZolReturnT code = transaction != nullptr ? transaction->deleteM(dn) : -1;
    ZOL_EXIT_TRACE(" << ");
    return code;
}

ZolReturnT FileMMoImpl::action(unsigned long txHandle, const char* dn, const char* actionName,
                               ZolMoNamedAttributeValueContainer_3** parameters,
                               ZolMoAttributeValueResult_3* result)
{
    ZOL_ENTER_TRACE(" >> '%lu', '%s', '%s'", txHandle, dn, actionName);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    FileMTransaction* transaction = findTransaction(txHandle);
    const ZolReturnT code = transaction != nullptr && result != nullptr
                                ? transaction->action(dn, actionName, parameters, *result)
                                : -1;
    ZOL_EXIT_TRACE(" << action retval %d", code);
    return code;
}

ZolReturnT FileMMoImpl::finalizeMoIterator(unsigned long long)
{
    return 0;
}

ZolReturnT FileMMoImpl::existsMo(unsigned long txHandle, const char* dn, bool* exists)
{
    ZOL_ENTER_TRACE(" >> txHandle='%lu'", txHandle);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    FileMTransaction* transaction = findTransaction(txHandle);
    if (transaction == nullptr)
    {
        return -2;
    }
    *exists = transaction->existsMo(dn);
    return 0;
}

ZolReturnT FileMMoImpl::countMoChildren(unsigned long txHandle, const char* dn, const char* className,
                                        unsigned long long* count)
{
    ZOL_ENTER_TRACE(" >> txHandle='%lu'", txHandle);
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    FileMTransaction* transaction = findTransaction(txHandle);
    return transaction != nullptr ? transaction->countMoChildren(dn, className, count) : -2;
}

} // namespace ZolFileManagement
