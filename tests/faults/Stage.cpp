#include "Scenario.h"
#include "support/AttributeText.h"

#include <algorithm>
#include <iterator>
#include <regex>

namespace faults
{

namespace
{

std::string codeText(ZolReturnT code)
{
    return code == 0 ? "ok" : "code " + std::to_string(code);
}

template<class Operation>
auto armed(Operation operation)
{
    const faultshim::Armed whileItLasts;
    return operation();
}

/// The text of a result that is released then, also that of a failure: what was made before it is the host's.
/// Times are all the same.
template<class Result, class Value, class Text>
std::string take(ZolReturnT code, const Result& result, Value value, Text text)
{
    const std::regex time("[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}");
    const std::string taken = code == 0 ? std::regex_replace(text(), time, "TIME") : codeText(code);
    if ((result.releaseCallback == nullptr) != (value == nullptr))
    {
        return taken + " and half a result";
    }
    if (result.releaseCallback != nullptr)
    {
        result.releaseCallback(value);
    }
    return taken;
}

} // namespace

Stage::Stage(Surroundings& shared, unsigned long txHandle)
    : surroundings(shared)
    , transaction(shared.transaction(txHandle))
    , _resource(shared.resource())
    , _objects(shared.objects())
    , _txHandle(txHandle)
{}

std::string Stage::join()
{
    const ZolReturnT code = armed([&] { return _resource.join(_txHandle); });
    return codeText(code);
}

std::string Stage::prepare()
{
    return codeText(armed([&] { return _resource.prepare(_txHandle); }));
}

std::string Stage::commit()
{
    return codeText(armed([&] { return _resource.commit(_txHandle); }));
}

std::string Stage::abort()
{
    return codeText(armed([&] { return _resource.abort(_txHandle); }));
}

std::string Stage::finish()
{
    return codeText(armed([&] { return _resource.finish(_txHandle); }));
}

std::string Stage::create(const std::string& parentDn, const std::string& name)
{
    return codeText(armed([&] {
        return _objects.createMo(_txHandle, parentDn.c_str(), "FileGroup", "fileGroupId", name.c_str(),
                                 nullptr);
    }));
}

std::string Stage::deleteMo(const std::string& dn)
{
    return codeText(armed([&] { return _objects.deleteMo(_txHandle, dn.c_str()); }));
}

std::string Stage::action(const std::string& dn, const std::string& name, const std::string& parameter)
{
    std::string text = parameter;
    ZolMoAttributeValue_3 value = {};
    value.stringValue = text.data();
    ZolMoNamedAttributeValueContainer_3 container = {"expression", attrTypeString, 1, &value};
    ZolMoNamedAttributeValueContainer_3* parameters[] = {&container, nullptr};
    ZolMoAttributeValueResult_3 result = {nullptr, nullptr};
    const ZolReturnT code =
        armed([&] { return _objects.action(_txHandle, dn.c_str(), name.c_str(), parameters, &result); });
    return take(code, result, result.container, [&] { return zoltest::toText(result.container); });
}

std::string Stage::attribute(const std::string& dn, const std::string& name)
{
    ZolMoAttributeValueResult_3 result = {nullptr, nullptr};
    const ZolReturnT code =
        armed([&] { return _objects.getMoAttribute(_txHandle, dn.c_str(), name.c_str(), &result); });
    return take(code, result, result.container, [&] { return zoltest::toText(result.container); });
}

std::string Stage::attributes(const std::string& dn, const std::vector<const char*>& names)
{
    std::vector<const char*> list = names;
    list.push_back(nullptr);
    ZolMoAttributeValuesResult_3 result = {nullptr, nullptr};
    const ZolReturnT code =
        armed([&] { return _objects.getMoAttributes(_txHandle, dn.c_str(), list.data(), &result); });
    return take(code, result, result.containers, [&] {
        std::string text;
        for (std::size_t i = 0; result.containers[i] != nullptr; ++i)
        {
            text += (i == 0 ? "" : " ") + zoltest::toText(result.containers[i]);
        }
        return text;
    });
}

std::string Stage::setMoAttribute(const std::string& dn)
{
    return codeText(
        armed([&] { return _objects.setMoAttribute(_txHandle, dn.c_str(), "fileGroupId", nullptr); }));
}

std::string Stage::exists(const std::string& dn)
{
    bool found = false;
    const ZolReturnT code = armed([&] { return _objects.existsMo(_txHandle, dn.c_str(), &found); });
    return code != 0 ? codeText(code) : found ? "yes" : "no";
}

std::string Stage::count(const std::string& dn, const std::string& className)
{
    unsigned long long number = 0;
    const ZolReturnT code =
        armed([&] { return _objects.countMoChildren(_txHandle, dn.c_str(), className.c_str(), &number); });
    return code != 0 ? codeText(code) : std::to_string(number);
}

std::string Stage::children(const std::string& parentDn, const std::string& className)
{
    unsigned long long iterator = 0;
    if (const ZolReturnT code = armed([&] {
            return _objects.newMoIterator(_txHandle, parentDn.c_str(), className.c_str(), &iterator);
        });
        code != 0)
    {
        return codeText(code);
    }
    Texts names;
    for (;;)
    {
        char* name = nullptr;
        if (const ZolReturnT code = armed([&] { return _objects.nextMo(iterator, &name); }); code != 0)
        {
            return "next: " + codeText(code);
        }
        if (name == nullptr)
        {
            break;
        }
        names.emplace_back(name);
    }
    std::sort(names.begin(), names.end());
    std::string text;
    for (const std::string& name : names)
    {
        text += (text.empty() ? "" : " ") + name;
    }
    return text.empty() ? "no name" : text;
}

std::string Stage::finalizeIterator()
{
    return codeText(armed([&] { return _objects.finalizeMoIterator(1); }));
}

std::string Stage::init(const std::string& config)
{
    try
    {
        return codeText(armed([&] { return surroundings.init(config); }));
    }
    catch (const std::exception&)
    {
        return "exception";
    }
}

std::string Stage::start()
{
    return codeText(armed([&] { return surroundings.start(); }));
}

} // namespace faults
