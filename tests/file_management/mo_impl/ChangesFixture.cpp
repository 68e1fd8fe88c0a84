#include "ChangesFixture.h"

#include "support/AttributeText.h"

#include <array>

namespace zoltest
{

using ZolFileManagement::FileMTransaction;

Changes::Changes()
    : worker(7, *host.portal1())
{
    FileMTransaction::initialize(tree.path());
}

ZolReturnT Changes::create(const std::string& name, const std::string& parentDn)
{
    return worker.create(parentDn.c_str(), "FileGroup", "fileGroupId", name.c_str());
}

std::string Changes::action(const std::string& dn, const std::string& name,
                            QenMoNamedAttributeValueContainer_3** parameters)
{
    QenMoAttributeValueResult_3 result = {nullptr, nullptr};
    const ZolReturnT code = worker.action(dn.c_str(), name.c_str(), parameters, result);
    EXPECT_EQ(result.releaseCallback, &FileMTransaction::releaseAttrResultCB);
    if (result.releaseCallback == nullptr)
    {
        return std::to_string(code) + " incomplete";
    }
    std::string text = std::to_string(code) + " " + toText(result.container);
    result.releaseCallback(result.container);
    return text;
}

std::string Changes::remove(const std::string& dn)
{
    return action(dn, "remove", nullptr);
}

std::string Changes::removeFile(const std::string& dn, const std::string& expression)
{
    std::string text = expression;
    QenMoAttributeValue_3 value{};
    value.stringValue = text.data();
    QenMoNamedAttributeValueContainer_3 parameter = {"fileName", attrTypeString, 1, &value};
    std::array<QenMoNamedAttributeValueContainer_3*, 2> parameters = {&parameter, nullptr};
    return action(dn, "removeFile", parameters.data());
}

void Changes::expectNothingWaits()
{
    const Texts before = tree.listing();
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_EQ(tree.listing(), before);
}

} // namespace zoltest
