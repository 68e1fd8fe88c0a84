#pragma once

#include "engine/AttributeValue.h"
#include "engine/CodeMeaning.h"

#include <functional>
#include <string>
#include <vector>
#include <zol/spi/ZolOamSpiManagedObject_3.h>

namespace zolhost
{

/// A component's objects as one transaction sees and changes them. DNs and names go to the component as they
/// are. Each operation throws Refusal if the component gives a code other than 0. The table and the
/// transaction must outlive it.
class ManagedObjects
{
public:
    ManagedObjects(const ZolOamSpiManagedObject_3& table, unsigned long txHandle);

    /// RDN values of the children of that class, in the component's order.
    std::vector<std::string> children(const std::string& parentDn, const std::string& className) const;
    /// The same, one at a time, until the function returns false.
    void eachChild(const std::string& parentDn, const std::string& className,
                   const std::function<bool(const char* value)>& visit) const;
    unsigned long long countChildren(const std::string& dn, const std::string& className) const;
    bool exists(const std::string& dn) const;
    AttributeValue attribute(const std::string& dn, const std::string& name) const;

    void create(const std::string& parentDn, const std::string& className, const std::string& keyAttribute,
                const std::string& keyValue) const;
    void deleteObject(const std::string& dn) const;
    /// The action `remove`. Its result.
    bool remove(const std::string& dn) const;
    /// The action `removeFile`: whether there was a file to be removed.
    bool removeFile(const std::string& dn, const std::string& expression) const;

private:
    bool action(Operation operation, const std::string& dn, const char* name,
                ZolMoNamedAttributeValueContainer_3** parameters) const;

    const ZolOamSpiManagedObject_3& _table;
    unsigned long _txHandle;
};

} // namespace zolhost
