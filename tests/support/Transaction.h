#pragma once

#include <string>
#include <vector>
#include <zol/spi/ZolOamSpiManagedObject_3.h>
#include <zol/spi/ZolOamSpiTransactionalResource_1.h>

namespace zoltest
{

/// A transaction as a host drives it. Its end finishes it, unless that was done or it was never joined. The
/// tables must outlive it.
class Transaction
{
public:
    Transaction(const ZolOamSpiTransactionalResource_1& resource, const ZolOamSpiManagedObject_3& objects,
                unsigned long txHandle);
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction();

    unsigned long handle() const { return _txHandle; }

    ZolReturnT join();
    ZolReturnT prepare();
    ZolReturnT commit();
    ZolReturnT abort();
    ZolReturnT finish();

    /// The names of the children in the order of the iteration. Throws if the iterator can't be had.
    std::vector<std::string> children(const std::string& parentDn, const std::string& className);
    /// Throws if it can't be had.
    unsigned long long newIterator(const std::string& parentDn, const std::string& className);

    /// The value as toText gives it, or "code -2" and the like. The result is released.
    std::string attribute(const std::string& dn, const std::string& name);
    /// One text for each attribute, or just the code.
    std::vector<std::string> attributes(const std::string& dn, const std::vector<std::string>& names);

    ZolReturnT create(const std::string& parentDn, const std::string& name); ///< of a FileGroup
    ZolReturnT createMo(const std::string& parentDn, const std::string& className,
                        const std::string& keyAttribute, const std::string& keyValue);
    ZolReturnT deleteMo(const std::string& dn);

    /// The result value as toText gives it, or "code -8" and the like, the value then not being looked at.
    std::string action(const std::string& dn, const std::string& name,
                       ZolMoNamedAttributeValueContainer_3** parameters);
    std::string remove(const std::string& dn);
    std::string removeFile(const std::string& dn, const std::string& expression);

    /// "yes", "no" or "code -2" and the like.
    std::string exists(const std::string& dn);
    /// Throws if the count can't be had.
    unsigned long long count(const std::string& dn, const std::string& className);

private:
    const ZolOamSpiTransactionalResource_1& _resource;
    const ZolOamSpiManagedObject_3& _objects;
    unsigned long _txHandle;
    bool _open = false;
};

} // namespace zoltest
