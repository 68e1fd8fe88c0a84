#include "ReadsFixture.h"

#include "support/AttributeText.h"

#include <stdexcept>

namespace zoltest
{

namespace
{

std::string codeText(ZolReturnT code)
{
    return "code " + std::to_string(code);
}

void require(ZolReturnT code, const std::string& operation)
{
    if (code != 0)
    {
        throw std::runtime_error(operation + " gave " + codeText(code));
    }
}

} // namespace

std::string groupDn(const std::string& value, const std::string& parentDn)
{
    return parentDn + ",FileGroup=" + value;
}

std::string fileDn(const std::string& value, const std::string& parentDn)
{
    return parentDn + ",FileInformation=" + value;
}

Reads::Reads()
    : worker(txHandle, *host.portal1())
{
    ZolFileManagement::FileMTransaction::initialize(tree.path());
}

unsigned long long Reads::newIterator(const std::string& parentDn, const std::string& className)
{
    unsigned long long id = 0;
    require(worker.newIterator(parentDn.c_str(), className.c_str(), &id), "newIterator");
    return id;
}

std::string Reads::next(unsigned long long iteratorId)
{
    char untouched[] = "untouched";
    char* name = untouched;
    const ZolReturnT code = worker.next(iteratorId, &name);
    if (code != 0)
    {
        EXPECT_EQ(name, nullptr);
        return codeText(code);
    }
    EXPECT_NE(name, untouched);
    return name == nullptr || name == untouched ? "end" : name;
}

Texts Reads::children(const std::string& parentDn, const std::string& className)
{
    const auto id = newIterator(parentDn, className);
    Texts names;
    for (std::string name = next(id); name != "end"; name = next(id))
    {
        names.push_back(name);
    }
    return names;
}

unsigned long long Reads::count(const std::string& dn, const std::string& className)
{
    unsigned long long result = 4711;
    require(worker.countMoChildren(dn.c_str(), className.c_str(), &result), "countMoChildren");
    return result;
}

std::string Reads::attribute(const std::string& dn, const std::string& name)
{
    QenMoAttributeValueContainer_3 garbage{};
    QenMoAttributeValueResult_3 result{[](QenMoAttributeValueContainer_3*) { FAIL(); }, &garbage};
    const ZolReturnT code = worker.getAttribute(dn.c_str(), name.c_str(), result);
    if (code != 0)
    {
        EXPECT_EQ(result.releaseCallback, nullptr) << name;
        EXPECT_EQ(result.container, nullptr) << name;
        return codeText(code);
    }
    std::string text = toText(result.container);
    result.releaseCallback(result.container);
    return text;
}

Texts Reads::attributes(const std::string& dn, const Texts& names)
{
    std::vector<const char*> list;
    list.reserve(names.size() + 1);
    for (const auto& name : names)
    {
        list.push_back(name.c_str());
    }
    list.push_back(nullptr);

    QenMoAttributeValueContainer_3* garbage = nullptr;
    QenMoAttributeValuesResult_3 result{[](QenMoAttributeValueContainer_3**) { FAIL(); }, &garbage};
    const ZolReturnT code = worker.getAttributes(dn.c_str(), list.data(), result);
    if (code != 0)
    {
        EXPECT_EQ(result.releaseCallback, nullptr);
        EXPECT_EQ(result.containers, nullptr);
        return {codeText(code)};
    }
    Texts texts;
    for (std::size_t i = 0; result.containers[i] != nullptr; ++i)
    {
        texts.push_back(toText(result.containers[i]));
    }
    result.releaseCallback(result.containers);
    return texts;
}

void Reads::create(const std::string& name, const std::string& parentDn)
{
    require(worker.create(parentDn.c_str(), "FileGroup", "fileGroupId", name.c_str()), "create");
}

void Reads::remove(const std::string& dn)
{
    require(worker.deleteM(dn.c_str()), "deleteM");
}

void Reads::removeByForce(const std::string& dn)
{
    QenMoNamedAttributeValueContainer_3* none = nullptr;
    QenMoAttributeValueResult_3 result{};
    const ZolReturnT code = worker.action(dn.c_str(), "remove", &none, result);
    result.releaseCallback(result.container);
    require(code, "remove");
}

} // namespace zoltest
