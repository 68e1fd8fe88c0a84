#include "engine/PolicyRepository.h"

#include "engine/DistinguishedName.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <utility>
#include <zol/common/MoUtils.h>
#include <zol/common/ZolException.h>

namespace zolhost
{

namespace
{

std::string dnOf(const FileGroupPolicy& policy)
{
    return std::string(DistinguishedName::ROOT) + ",FileGroupPolicy=" + policy.id;
}

void releaseContainer(ZolMoAttributeValueContainer_3* container)
{
    Zol::MoUtils::deleteAttributeValueContainer(container);
}

/// Allocated as MoUtils frees it.
void fill(ZolMoAttributeValueResult_3& result, ZolOamSpiMoAttributeType_3 type,
          const std::vector<std::string>& texts)
{
    auto container = std::make_unique<ZolMoAttributeValueContainer_3>();
    container->valueType = type;
    container->nrOfValues = static_cast<uint32_t>(texts.size());
    container->values = texts.empty() ? nullptr : new ZolMoAttributeValue_3[texts.size()];
    for (std::size_t i = 0; i < texts.size(); ++i)
    {
        char* const copy = strdup(texts[i].c_str());
        if (type == attrTypeReference)
        {
            container->values[i].referenceValue = copy;
        }
        else
        {
            container->values[i].stringValue = copy;
        }
    }
    result = {releaseContainer, container.release()};
}

} // namespace

PolicyRepository::PolicyRepository(std::vector<FileGroupPolicy> policies)
    : _policies(std::move(policies))
{
    install(this);
}

PolicyRepository::~PolicyRepository()
{
    install(nullptr);
}

std::string PolicyRepository::getFirstMoInstance(unsigned long /*txHandle*/, const std::string& classPath)
{
    if (classPath != "ManagedElement,SystemFunctions,FileM")
    {
        throw Zol::ZolException(ZolReturnNoSuch, "No instance of %s", classPath.c_str());
    }
    return std::string(DistinguishedName::ROOT);
}

std::list<std::string> PolicyRepository::getChildren(unsigned long /*txHandle*/, const std::string& parentDn,
                                                     const std::string& className)
{
    std::list<std::string> children;
    if (parentDn == DistinguishedName::ROOT && className == "FileGroupPolicy")
    {
        std::ranges::transform(_policies, std::back_inserter(children), dnOf);
    }
    return children;
}

void PolicyRepository::getAttribute(unsigned long /*txHandle*/, const std::string& dn,
                                    const std::string& attributeName, ZolMoAttributeValueResult_3& result)
{
    const auto policy = std::ranges::find(_policies, dn, dnOf);
    if (policy != _policies.end() && attributeName == "fileGroup")
    {
        fill(result, attrTypeReference, policy->fileGroups);
    }
    else if (policy != _policies.end() && attributeName == "fileGroupPolicyId")
    {
        fill(result, attrTypeString, {policy->id});
    }
    else
    {
        throw Zol::ZolException(ZolReturnNoSuch, "No attribute %s of %s", attributeName.c_str(), dn.c_str());
    }
}

} // namespace zolhost
