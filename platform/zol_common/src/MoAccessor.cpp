#include <utility>
#include <zol/common/MoAccessor.h>
#include <zol/common/MoRepository.h>
#include <zol/common/ZolException.h>

namespace Zol
{

MoAccessor::MoAttributeValueResult::MoAttributeValueResult()
    : ZolMoAttributeValueResult_3{nullptr, nullptr}
{}

MoAccessor::MoAttributeValueResult::~MoAttributeValueResult()
{
    if (releaseCallback != nullptr && container != nullptr)
    {
        releaseCallback(container);
    }
}

MoAccessor::MoAccessor(ZolLockPolicyT /*lockPolicy*/, int /*timeoutSeconds*/) {}

MoAccessor::~MoAccessor() = default;

ZolReturnT MoAccessor::getFirstMoInstance(const std::string& classPath, std::string& dn)
{
    MoRepository* const repository = MoRepository::installed();
    if (repository == nullptr)
    {
        throw ZolException(ZolReturnNoSuch, "No repository of managed objects: no instance of %s",
                           classPath.c_str());
    }
    dn = repository->getFirstMoInstance(txHandle(), classPath);
    return ZolReturnOk;
}

ZolReturnT MoAccessor::getChildren(const std::string& parentDn, const std::string& className,
                                   std::list<std::string>& children)
{
    children.clear();
    if (MoRepository* const repository = MoRepository::installed())
    {
        children = repository->getChildren(txHandle(), parentDn, className);
    }
    return ZolReturnOk;
}

void MoAccessor::getAttrContainer(const std::string& dn, const std::string& attributeName,
                                  MoAttributeValueResult& result)
{
    MoRepository* const repository = MoRepository::installed();
    if (repository == nullptr)
    {
        throw ZolException(ZolReturnNoSuch, "No repository of managed objects: no attribute %s of %s",
                           attributeName.c_str(), dn.c_str());
    }
    MoAttributeValueResult read;
    repository->getAttribute(txHandle(), dn, attributeName, read);
    // an earlier value of the result is released with `read`
    std::swap<ZolMoAttributeValueResult_3>(result, read);
}

void MoAccessor::validateType(const ZolMoAttributeValueContainer_3& container,
                              const ZolOamSpiMoAttributeType_3& type)
{
    if (container.valueType != type)
    {
        throw ZolException(ZolReturnFailure, "An attribute value is of type %d, not of type %d",
                           static_cast<int>(container.valueType), static_cast<int>(type));
    }
}

template<>
ZolOamSpiMoAttributeType_3 MoAccessor::getSpiType<MoAccessor::MoRef>()
{
    return attrTypeReference;
}

template<>
MoAccessor::MoRef MoAccessor::extractAttr<MoAccessor::MoRef>(const ZolMoAttributeValue_3& value)
{
    return MoRef{value.referenceValue == nullptr ? "" : value.referenceValue};
}

} // namespace Zol
