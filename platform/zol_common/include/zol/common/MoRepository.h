#pragma once

#include <list>
#include <string>
#include <zol/spi/ZolMoAttributeValue_3.h>

namespace Zol
{

/// The managed objects of others, as the host knows them. A host derives from it and installs one object.
/// Calls come on the threads of a component's operations, with that component's lock held.
///
/// libzol_file_management asks it for the attribute `reservedByPolicy`. Each function says what that read
/// makes of a ZolException and of another std::exception. Whatever else is thrown ends the process, but in
/// getFirstMoInstance.
class MoRepository
{
public:
    virtual ~MoRepository() = default;

    /// DN of the first instance of a class path such as "ManagedElement,SystemFunctions". Throws ZolException
    /// if there is none: whatever is thrown, a warning is logged, and for as long as it is loaded
    /// libzol_file_management takes "ManagedElement=1,SystemFunctions=1,FileM=1" for the DN, as it does
    /// without a repository. An empty text it asks for again the next time.
    virtual std::string getFirstMoInstance(unsigned long txHandle, const std::string& classPath) = 0;

    /// DNs of the children of that class. Throws ZolException if they can't be told: the read gives its code;
    /// -1 for another std::exception. Without a repository there are none.
    virtual std::list<std::string> getChildren(unsigned long txHandle, const std::string& parentDn,
                                               const std::string& className) = 0;

    /// Value of one attribute; `result` is released through its own callback. Throws ZolException if it can't
    /// be read: the policy then counts as one that names no FileGroup, and the read goes on. With another
    /// std::exception, or values that are no references, the read gives -1.
    virtual void getAttribute(unsigned long txHandle, const std::string& dn, const std::string& attributeName,
                              ZolMoAttributeValueResult_3& result) = 0;

    /// Sets the repository of this process, or none with null; the caller keeps it alive until
    /// the next call has returned and no call in it is under way.
    static void install(MoRepository* repository) noexcept;
    /// The one that is set, or null.
    static MoRepository* installed() noexcept;
};

} // namespace Zol
