#include "FileMTransaction.h"
#include "TextCopy.h"

#include <cstdlib>
#include <zol/common/MoUtils.h>

namespace ZolFileManagement
{

void FileMTransaction::initAttrResult(QenOamSpiMoAttributeType_3 type, unsigned int count,
                                      QenMoAttributeValueResult_3& result)
{
    result.container = new QenMoAttributeValueContainer_3{type, count, nullptr};
    result.releaseCallback = releaseAttrResultCB;
    if (count != 0)
    {
        result.container->values = new QenMoAttributeValue_3[count];
    }
}

void FileMTransaction::setAttrStringResult(const std::string& value, QenMoAttributeValueResult_3& result)
{
    Zol::TextCopy text = Zol::copyText(value.c_str());
    initAttrResult(attrTypeString, 1, result);
    result.container->values[0].stringValue = text.release();
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
