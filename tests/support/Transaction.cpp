#include "support/Transaction.h"

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

void require(ZolReturnT code, const char* operation)
{
    if (code != 0)
    {
        throw std::runtime_error(std::string(operation) + " gave " + codeText(code));
    }
}

template<class Result, class Pointer>
void release(const Result& result, Pointer value)
{
    if (result.releaseCallback != nullptr)
    {
        result.releaseCallback(value);
    }
}

} // namespace

Transaction::Transaction(const ZolOamSpiTransactionalResource_1& resource,
                         const ZolOamSpiManagedObject_3& objects, unsigned long txHandle)
    : _resource(resource)
    , _objects(objects)
    , _txHandle(txHandle)
{}

Transaction::~Transaction()
{
    if (_open)
    {
        finish();
    }
}

ZolReturnT Transaction::join()
{
    const ZolReturnT code = _resource.join(_txHandle);
    _open = _open || code == 0;
    return code;
}

ZolReturnT Transaction::prepare()
{
    return _resource.prepare(_txHandle);
}

ZolReturnT Transaction::commit()
{
    return _resource.commit(_txHandle);
}

ZolReturnT Transaction::abort()
{
    return _resource.abort(_txHandle);
}

ZolReturnT Transaction::finish()
{
    _open = false;
    return _resource.finish(_txHandle);
}

std::vector<std::string> Transaction::children(const std::string& parentDn, const std::string& className)
{
    const unsigned long long iterator = newIterator(parentDn, className);
    std::vector<std::string> names;
    for (;;)
    {
        char* name = nullptr;
        require(_objects.nextMo(iterator, &name), "nextMo");
        if (name == nullptr)
        {
            return names;
        }
        names.emplace_back(name);
    }
}

unsigned long long Transaction::newIterator(const std::string& parentDn, const std::string& className)
{
    unsigned long long iterator = 0;
    require(_objects.newMoIterator(_txHandle, parentDn.c_str(), className.c_str(), &iterator),
            "newMoIterator");
    return iterator;
}

std::string Transaction::attribute(const std::string& dn, const std::string& name)
{
    ZolMoAttributeValueResult_3 result = {nullptr, nullptr};
    const ZolReturnT code = _objects.getMoAttribute(_txHandle, dn.c_str(), name.c_str(), &result);
    std::string text = code == 0 ? toText(result.container) : codeText(code);
    release(result, result.container);
    return text;
}

std::vector<std::string> Transaction::attributes(const std::string& dn, const std::vector<std::string>& names)
{
    std::vector<const char*> list;
    list.reserve(names.size() + 1);
    for (const auto& name : names)
    {
        list.push_back(name.c_str());
    }
    list.push_back(nullptr);
    ZolMoAttributeValuesResult_3 result = {nullptr, nullptr};
    const ZolReturnT code = _objects.getMoAttributes(_txHandle, dn.c_str(), list.data(), &result);
    if (code != 0)
    {
        release(result, result.containers);
        return {codeText(code)};
    }
    std::vector<std::string> texts;
    for (std::size_t i = 0; result.containers[i] != nullptr; ++i)
    {
        texts.push_back(toText(result.containers[i]));
    }
    release(result, result.containers);
    return texts;
}

ZolReturnT Transaction::create(const std::string& parentDn, const std::string& name)
{
    return createMo(parentDn, "FileGroup", "fileGroupId", name);
}

ZolReturnT Transaction::createMo(const std::string& parentDn, const std::string& className,
                                 const std::string& keyAttribute, const std::string& keyValue)
{
    return _objects.createMo(_txHandle, parentDn.c_str(), className.c_str(), keyAttribute.c_str(),
                             keyValue.c_str(), nullptr);
}

ZolReturnT Transaction::deleteMo(const std::string& dn)
{
    return _objects.deleteMo(_txHandle, dn.c_str());
}

std::string Transaction::action(const std::string& dn, const std::string& name,
                                ZolMoNamedAttributeValueContainer_3** parameters)
{
    ZolMoAttributeValueResult_3 result = {nullptr, nullptr};
    const ZolReturnT code = _objects.action(_txHandle, dn.c_str(), name.c_str(), parameters, &result);
    std::string text = code == 0 ? toText(result.container) : codeText(code);
    release(result, result.container);
    return text;
}

std::string Transaction::remove(const std::string& dn)
{
    ZolMoNamedAttributeValueContainer_3* none = nullptr;
    return action(dn, "remove", &none);
}

std::string Transaction::removeFile(const std::string& dn, const std::string& expression)
{
    std::string text = expression;
    ZolMoAttributeValue_3 value = {};
    value.stringValue = text.data();
    ZolMoNamedAttributeValueContainer_3 parameter = {"expression", attrTypeString, 1, &value};
    ZolMoNamedAttributeValueContainer_3* parameters[] = {&parameter, nullptr};
    return action(dn, "removeFile", parameters);
}

std::string Transaction::exists(const std::string& dn)
{
    bool found = false;
    const ZolReturnT code = _objects.existsMo(_txHandle, dn.c_str(), &found);
    return code != 0 ? codeText(code) : found ? "yes" : "no";
}

unsigned long long Transaction::count(const std::string& dn, const std::string& className)
{
    unsigned long long result = 0;
    require(_objects.countMoChildren(_txHandle, dn.c_str(), className.c_str(), &result), "countMoChildren");
    return result;
}

} // namespace zoltest
