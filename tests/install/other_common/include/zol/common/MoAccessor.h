#pragma once

#include <list>
#include <string>
#include <vector>
#include <zol/spi/ZolMoAttributeValue_3.h>
#include <zol/spi/ZolReturnT.h>

namespace Zol
{

class MoAccessor
{
public:
    struct MoAttributeValueResult : ZolMoAttributeValueResult_3
    {
        MoAttributeValueResult();
        ~MoAttributeValueResult();
    };

    struct MoRef
    {
        std::string dn;
    };

    MoAccessor(int lockPolicy, int timeoutSeconds);
    virtual ~MoAccessor();

    void useTransaction(const unsigned long& txHandle);
    ZolReturnT getFirstMoInstance(const std::string& classPath, std::string& dn);
    ZolReturnT getChildren(const std::string& parentDn, const std::string& className,
                           std::list<std::string>& children);
    void getAttrContainer(const std::string& dn, const std::string& attributeName,
                          MoAttributeValueResult& result);

    template<class T>
    std::vector<T> getSeqAttr(const std::string& dn, const std::string& attributeName);

    template<class T>
    static ZolOamSpiMoAttributeType_3 getSpiType();

    static void validateType(const ZolMoAttributeValueContainer_3& container,
                             const ZolOamSpiMoAttributeType_3& type);

    template<class T>
    static T extractAttr(const ZolMoAttributeValue_3& value);
};

template<>
ZolOamSpiMoAttributeType_3 MoAccessor::getSpiType<MoAccessor::MoRef>();

template<>
MoAccessor::MoRef MoAccessor::extractAttr<MoAccessor::MoRef>(const ZolMoAttributeValue_3& value);

} // namespace Zol
