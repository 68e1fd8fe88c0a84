#include "FileMTransaction.h"

#include <cstdlib>
#include <cstring>
#include <zol/common/MoUtils.h>

namespace ZolFileManagement
{

void FileMTransaction::initAttrResult(QenOamSpiMoAttributeType_3 type, unsigned int count,
                                      QenMoAttributeValueResult_3& result)
{
    result.releaseCallback = releaseAttrResultCB;
    result.container = new QenMoAttributeValueContainer_3{type, count, nullptr};
    if (count != 0)
    {
        result.container->values = new QenMoAttributeValue_3[count];
    }
}

void FileMTransaction::setAttrStringResult(const std::string& value, QenMoAttributeValueResult_3& result)
{
    initAttrResult(attrTypeString, 1, result);
    result.container->values[0].stringValue = ::strdup(value.c_str());
}

void FileMTransaction::releaseAttrResultCB(QenMoAttributeValueContainer_3* container)
{
    Zol::MoUtils::deleteAttributeValueContainer(container);
}

void FileMTransaction::releaseAttributesResultCB(QenMoAttributeValueContainer_3** containers)
{
    if (containers == nullptr)
    {
        return;
    }
    for (QenMoAttributeValueContainer_3** container = containers; *container != nullptr; ++container)
    {
        Zol::MoUtils::deleteAttributeValueContainer(*container);
    }
    std::free(containers);
}

} // namespace ZolFileManagement
