#include "engine/ManagedObjects.h"

#include <array>

namespace zolhost
{

namespace
{

void check(Operation operation, const std::string& dn, ZolReturnT code)
{
    if (code != ZolReturnOk)
    {
        refuseByCode(operation, dn, code);
    }
}

/// A result of the component, released at the end.
struct Result : ZolMoAttributeValueResult_3
{
    Result()
        : ZolMoAttributeValueResult_3{nullptr, nullptr}
    {}
    Result(const Result&) = delete;
    Result& operator=(const Result&) = delete;
    ~Result()
    {
        if (releaseCallback != nullptr)
        {
            releaseCallback(container);
        }
    }
};

} // namespace

ManagedObjects::ManagedObjects(const ZolOamSpiManagedObject_3& table, unsigned long txHandle)
    : _table(table)
    , _txHandle(txHandle)
{}

std::vector<std::string> ManagedObjects::children(const std::string& parentDn,
                                                  const std::string& className) const
{
    std::vector<std::string> names;
    eachChild(parentDn, className, [&](const char* value) {
        names.emplace_back(value);
        return true;
    });
    return names;
}

void ManagedObjects::eachChild(const std::string& parentDn, const std::string& className,
                               const std::function<bool(const char* value)>& visit) const
{
    unsigned long long iterator = 0;
    check(Operation::List, parentDn,
          _table.newMoIterator(_txHandle, parentDn.c_str(), className.c_str(), &iterator));
    bool goesOn = true;
    while (goesOn)
    {
        char* value = nullptr;
        check(Operation::List, parentDn, _table.nextMo(iterator, &value));
        goesOn = value != nullptr && visit(value);
    }
    _table.finalizeMoIterator(iterator);
}

unsigned long long ManagedObjects::countChildren(const std::string& dn, const std::string& className) const
{
    unsigned long long count = 0;
    check(Operation::Count, dn, _table.countMoChildren(_txHandle, dn.c_str(), className.c_str(), &count));
    return count;
}

bool ManagedObjects::exists(const std::string& dn) const
{
    bool found = false;
    check(Operation::Exists, dn, _table.existsMo(_txHandle, dn.c_str(), &found));
    return found;
}

AttributeValue ManagedObjects::attribute(const std::string& dn, const std::string& name) const
{
    Result result;
    check(Operation::Read, dn, _table.getMoAttribute(_txHandle, dn.c_str(), name.c_str(), &result));
    return copyOf(result.container);
}

void ManagedObjects::create(const std::string& parentDn, const std::string& className,
                            const std::string& keyAttribute, const std::string& keyValue) const
{
    check(Operation::Create, parentDn + "," + className + "=" + keyValue,
          _table.createMo(_txHandle, parentDn.c_str(), className.c_str(), keyAttribute.c_str(),
                          keyValue.c_str(), nullptr));
}

void ManagedObjects::deleteObject(const std::string& dn) const
{
    check(Operation::Delete, dn, _table.deleteMo(_txHandle, dn.c_str()));
}

bool ManagedObjects::remove(const std::string& dn) const
{
    std::array<ZolMoNamedAttributeValueContainer_3*, 1> none = {nullptr};
    return action(Operation::Remove, dn, "remove", none.data());
}

bool ManagedObjects::removeFile(const std::string& dn, const std::string& expression) const
{
    std::string text = expression;
    ZolMoAttributeValue_3 value = {};
    value.stringValue = text.data();
    ZolMoNamedAttributeValueContainer_3 parameter = {"expression", attrTypeString, 1, &value};
    std::array<ZolMoNamedAttributeValueContainer_3*, 2> parameters = {&parameter, nullptr};
    return action(Operation::RemoveFile, dn, "removeFile", parameters.data());
}

bool ManagedObjects::action(Operation operation, const std::string& dn, const char* name,
                            ZolMoNamedAttributeValueContainer_3** parameters) const
{
    Result result;
    check(operation, dn, _table.action(_txHandle, dn.c_str(), name, parameters, &result));
    const AttributeValue value = copyOf(result.container);
    return value.type == attrTypeBool && value.values.size() == 1 && std::get<bool>(value.values.front());
}

} // namespace zolhost
