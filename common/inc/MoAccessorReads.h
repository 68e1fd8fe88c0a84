#pragma once

#include "LogForms.h"

#include <zol/common/MoAccessor.h>
#include <zol/common/ZolException.h>

namespace Zol
{

template<class T>
std::vector<T> MoAccessor::getSeqAttr(const std::string& dn, const std::string& attributeName)
{
    ZOL_TRACE_FORM(0, ::Zol::Trace::Common, "MoAccessor::getAttr<> dName :%s attrName :%s", dn.c_str(),
                   attributeName.c_str());
    MoAttributeValueResult result;
    try
    {
        getAttrContainer(dn, attributeName, result);
    }
    catch (const ZolException&)
    {
        return {};
    }
    const ZolMoAttributeValueContainer_3* container = result.container;
    if (container == nullptr || container->nrOfValues == 0 || container->values == nullptr)
    {
        return {};
    }

    validateType(*container, getSpiType<T>());
    std::vector<T> elements;
    elements.reserve(container->nrOfValues);
    for (uint32_t i = 0; i < container->nrOfValues; ++i)
    {
        elements.push_back(extractAttr<T>(container->values[i]));
    }
    return elements;
}

} // namespace Zol
