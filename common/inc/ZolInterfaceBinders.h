#pragma once

#include <boost/core/demangle.hpp>
#include <exception>
#include <string>
#include <typeinfo>
#include <zol/spi/ZolOamSpiManagedObject_3.h>
#include <zol/spi/ZolOamSpiTransactionalResource_1.h>

// The C library's own report of a failed assertion; <assert.h> doesn't declare it in a release build.
// NOLINTNEXTLINE(readability-redundant-declaration)
extern "C" void __assert_fail(const char* assertion, const char* file, unsigned int line,
                              const char* function) noexcept __attribute__((noreturn));

namespace Zol
{

/// A second live binder of a class would take the first one's calls, so it stops the process in every build,
/// and in the same words whatever compiler made it.
inline void assertNoInstance(bool none, unsigned int line, const char* binder,
                             const std::type_info& implementation)
{
    if (!none)
    {
        const std::string function =
            std::string("Zol::") + binder + "<T>::" + binder +
            "(const ZolMgmtSpiInterface_1T&, T&) [with T = " + boost::core::demangle(implementation.name()) +
            "; ZolMgmtSpiInterface_1T = ZolMgmtSpiInterface_1]";
        __assert_fail("!_instance", "common/inc/ZolInterfaceBinders", line, function.c_str());
    }
}

/// Forwards a call of the host to the implementation object. The last place where an exception can become a
/// code: whatever is no std::exception is the host's.
template<class T, class... Parameters, class... Arguments>
ZolReturnT forwardTo(T* instance, ZolReturnT (T::*operation)(Parameters...), Arguments... arguments)
{
    try
    {
        return (instance->*operation)(arguments...);
    }
    catch (const std::exception&)
    {
        return -1;
    }
}

/// Owns the host's table of the interface "ZolOamSpiTransactionalResource", whose functions carry no context,
/// and routes its calls to one object. At most one binder of a class lives at a time. Takes no lock.
template<class T>
class TransactionalResource1Binder
{
public:
    TransactionalResource1Binder(const ZolMgmtSpiInterface_1T& id, T& impl)
    {
        assertNoInstance(!_instance, __LINE__, "TransactionalResource1Binder", typeid(T));
        _table = {id.componentName, id.interfaceName, id.version, join, prepare, commit, abort, finish};
        _instance = &impl;
    }
    TransactionalResource1Binder(const TransactionalResource1Binder&) = delete;
    TransactionalResource1Binder& operator=(const TransactionalResource1Binder&) = delete;
    virtual ~TransactionalResource1Binder() { _instance = nullptr; }

    ZolOamSpiTransactionalResource_1* table() { return &_table; }

private:
    static ZolReturnT join(unsigned long txHandle) { return forwardTo(_instance, &T::join, txHandle); }
    static ZolReturnT prepare(unsigned long txHandle) { return forwardTo(_instance, &T::prepare, txHandle); }
    static ZolReturnT commit(unsigned long txHandle) { return forwardTo(_instance, &T::commit, txHandle); }
    static ZolReturnT abort(unsigned long txHandle) { return forwardTo(_instance, &T::abort, txHandle); }
    static ZolReturnT finish(unsigned long txHandle) { return forwardTo(_instance, &T::finish, txHandle); }

    ZolOamSpiTransactionalResource_1 _table{};
    static inline T* _instance = nullptr;
};

/// The same for the interface "ZolOamSpiManagedObject".
template<class T>
class ManagedObject3Binder
{
public:
    ManagedObject3Binder(const ZolMgmtSpiInterface_1T& id, T& impl)
    {
        assertNoInstance(!_instance, __LINE__, "ManagedObject3Binder", typeid(T));
        _table = {id.componentName, id.interfaceName,   id.version, setMoAttribute, getMoAttribute,
                  getMoAttributes,  newMoIterator,      nextMo,     createMo,       deleteMo,
                  action,           finalizeMoIterator, existsMo,   countMoChildren};
        _instance = &impl;
    }
    ManagedObject3Binder(const ManagedObject3Binder&) = delete;
    ManagedObject3Binder& operator=(const ManagedObject3Binder&) = delete;
    virtual ~ManagedObject3Binder() { _instance = nullptr; }

    ZolOamSpiManagedObject_3* table() { return &_table; }

private:
    static ZolReturnT setMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                                     const ZolMoAttributeValueContainer_3* value)
    {
        return forwardTo(_instance, &T::setMoAttribute, txHandle, dn, attributeName, value);
    }
    static ZolReturnT getMoAttribute(unsigned long txHandle, const char* dn, const char* attributeName,
                                     ZolMoAttributeValueResult_3* result)
    {
        return forwardTo(_instance, &T::getMoAttribute, txHandle, dn, attributeName, result);
    }
    static ZolReturnT getMoAttributes(unsigned long txHandle, const char* dn, const char** attributeNames,
                                      ZolMoAttributeValuesResult_3* result)
    {
        return forwardTo(_instance, &T::getMoAttributes, txHandle, dn, attributeNames, result);
    }
    static ZolReturnT newMoIterator(unsigned long txHandle, const char* parentDn, const char* className,
                                    unsigned long long* iteratorId)
    {
        return forwardTo(_instance, &T::newMoIterator, txHandle, parentDn, className, iteratorId);
    }
    static ZolReturnT nextMo(unsigned long long iteratorId, char** name)
    {
        return forwardTo(_instance, &T::nextMo, iteratorId, name);
    }
    static ZolReturnT createMo(unsigned long txHandle, const char* parentDn, const char* className,
                               const char* keyAttribute, const char* keyValue,
                               ZolMoNamedAttributeValueContainer_3** attributes)
    {
        return forwardTo(_instance, &T::createMo, txHandle, parentDn, className, keyAttribute, keyValue,
                         attributes);
    }
    static ZolReturnT deleteMo(unsigned long txHandle, const char* dn)
    {
        return forwardTo(_instance, &T::deleteMo, txHandle, dn);
    }
    static ZolReturnT action(unsigned long txHandle, const char* dn, const char* actionName,
                             ZolMoNamedAttributeValueContainer_3** parameters,
                             ZolMoAttributeValueResult_3* result)
    {
        return forwardTo(_instance, &T::action, txHandle, dn, actionName, parameters, result);
    }
    static ZolReturnT finalizeMoIterator(unsigned long long iteratorId)
    {
        return forwardTo(_instance, &T::finalizeMoIterator, iteratorId);
    }
    static ZolReturnT existsMo(unsigned long txHandle, const char* dn, bool* exists)
    {
        return forwardTo(_instance, &T::existsMo, txHandle, dn, exists);
    }
    static ZolReturnT countMoChildren(unsigned long txHandle, const char* dn, const char* className,
                                      unsigned long long* count)
    {
        return forwardTo(_instance, &T::countMoChildren, txHandle, dn, className, count);
    }

    ZolOamSpiManagedObject_3 _table{};
    static inline T* _instance = nullptr;
};

} // namespace Zol
