#pragma once

#include <compare>
#include <list>
#include <string>
#include <vector>
#include <zol/common/Transaction.h>
#include <zol/spi/ZolMoAttributeValue_3.h>

namespace Zol
{

/// How an accessor locks what it reads. The installed repository reads without locks, whatever the policy.
using ZolLockPolicyT = int;

/// Reads the managed objects of others, in one transaction. With no MoRepository installed there are none.
class MoAccessor : public Transaction
{
public:
    /// A value of another object, released at the end of its life.
    class MoAttributeValueResult : public ZolMoAttributeValueResult_3
    {
    public:
        MoAttributeValueResult();
        MoAttributeValueResult(const MoAttributeValueResult&) = delete;
        MoAttributeValueResult& operator=(const MoAttributeValueResult&) = delete;
        virtual ~MoAttributeValueResult();
    };

    /// A reference to another object by its DN; compares as that text.
    struct MoRef
    {
        std::string dn; ///< the DN as a text

        /// Orders as the texts do.
        // NOLINTNEXTLINE(modernize-use-nullptr): the check takes the comparison with 0 for a pointer
        auto operator<=>(const MoRef&) const = default;
    };

    /// Neither argument has an effect on the installed repository.
    MoAccessor(ZolLockPolicyT lockPolicy, int timeoutSeconds);
    MoAccessor(const MoAccessor&) = delete;
    MoAccessor& operator=(const MoAccessor&) = delete;
    ~MoAccessor(); // NOLINT(performance-trivially-destructible): a symbol of the library, whatever it does

    /// Writes the DN of the first instance of a class path into `dn` and gives 0. Throws ZolException if
    /// there is none.
    ZolReturnT getFirstMoInstance(const std::string& classPath, std::string& dn);

    /// Fills `children` with the DNs of the children of that class and gives 0; without a repository there
    /// are none. Throws what the repository throws.
    ZolReturnT getChildren(const std::string& parentDn, const std::string& className,
                           std::list<std::string>& children);

    /// Reads one attribute. Throws ZolException if it can't be read.
    void getAttrContainer(const std::string& dn, const std::string& attributeName,
                          MoAttributeValueResult& result);

    /// The elements of a sequence attribute; none if it can't be read or has no value. Throws if they are of
    /// another type. Defined in MoAccessorReads.h, which is built into the component that reads.
    template<class T>
    std::vector<T> getSeqAttr(const std::string& dn, const std::string& attributeName);

    /// The type code that belongs to T.
    template<class T>
    static ZolOamSpiMoAttributeType_3 getSpiType();

    /// Throws ZolException if the container is not of that type.
    static void validateType(const ZolMoAttributeValueContainer_3& container,
                             const ZolOamSpiMoAttributeType_3& type);

    /// One value as a T; its type is not looked at.
    template<class T>
    static T extractAttr(const ZolMoAttributeValue_3& value);
};

template<>
ZolOamSpiMoAttributeType_3 MoAccessor::getSpiType<MoAccessor::MoRef>();

template<>
MoAccessor::MoRef MoAccessor::extractAttr<MoAccessor::MoRef>(const ZolMoAttributeValue_3& value);

} // namespace Zol
