#include "model/Subject.h"

#include "support/AttributeText.h"
#include "support/LoadedComponent.h"
#include "support/LoadedLibrary.h"

#include <dlfcn.h>
#include <stdexcept>

namespace zolmodel
{

namespace
{

const unsigned long long UNTOUCHED = 777777777;

template<class Result, class Value>
std::string released(Result& result, Value* value, std::string text)
{
    if (result.releaseCallback == nullptr)
    {
        return value == nullptr ? "nothing" : "something without a release";
    }
    result.releaseCallback(value);
    return text;
}

Outcome attribute(const ZolOamSpiManagedObject_3& objects, const Operation& operation, unsigned long handle)
{
    ZolMoAttributeValueResult_3 result = {nullptr, nullptr};
    Outcome outcome;
    outcome.code = objects.getMoAttribute(handle, operation.dn.c_str(), operation.name.c_str(), &result);
    outcome.value = released(result, result.container, zoltest::toText(result.container));
    return outcome;
}

Outcome attributes(const ZolOamSpiManagedObject_3& objects, const Operation& operation, unsigned long handle)
{
    std::vector<const char*> names;
    names.reserve(operation.names.size() + 1);
    for (const auto& name : operation.names)
    {
        names.push_back(name.c_str());
    }
    names.push_back(nullptr);
    ZolMoAttributeValuesResult_3 result = {nullptr, nullptr};
    Outcome outcome;
    outcome.code = objects.getMoAttributes(handle, operation.dn.c_str(),
                                           operation.odd ? nullptr : names.data(), &result);
    std::string text;
    for (std::size_t i = 0; result.containers != nullptr && result.containers[i] != nullptr; ++i)
    {
        text += zoltest::toText(result.containers[i]) + "; ";
    }
    outcome.value = released(result, result.containers, text + "end");
    return outcome;
}

Outcome action(const ZolOamSpiManagedObject_3& objects, const Operation& operation, unsigned long handle)
{
    std::string text = operation.text;
    ZolMoAttributeValue_3 values[2] = {};
    values[0].stringValue = text.data();
    values[1].stringValue = text.data();
    const auto shape = static_cast<Parameters>(operation.number);
    ZolMoNamedAttributeValueContainer_3 first = {
        "expression", shape == Parameters::WrongType ? attrTypeReference : attrTypeString,
        shape == Parameters::TwoValues ? 2U : 1U, values};
    ZolMoNamedAttributeValueContainer_3 second = {nullptr, attrTypeInt, 0, nullptr};
    ZolMoNamedAttributeValueContainer_3* list[] = {shape == Parameters::None ? nullptr : &first,
                                                   shape == Parameters::Surplus ? &second : nullptr, nullptr};
    ZolMoAttributeValueResult_3 result = {nullptr, nullptr};
    Outcome outcome;
    outcome.code =
        objects.action(handle, operation.dn.c_str(), operation.name.c_str(),
                       shape == Parameters::NoList ? nullptr : list, operation.odd ? nullptr : &result);
    outcome.value = released(result, result.container, zoltest::toText(result.container));
    if (outcome.value == "nothing")
    {
        outcome.value = "untouched";
    }
    return outcome;
}

Outcome create(const ZolOamSpiManagedObject_3& objects, const Operation& operation, unsigned long handle)
{
    std::string text = "ignored";
    ZolMoAttributeValue_3 value = {};
    value.stringValue = text.data();
    ZolMoNamedAttributeValueContainer_3 attribute = {"fileGroupId", attrTypeString, 1, &value};
    ZolMoNamedAttributeValueContainer_3* list[] = {&attribute, nullptr};
    Outcome outcome;
    outcome.code =
        objects.createMo(handle, operation.dn.c_str(), operation.name.c_str(), operation.text.c_str(),
                         operation.value.c_str(), operation.odd ? list : nullptr);
    return outcome;
}

std::string numbered(const char* title, unsigned long long number)
{
    return number == UNTOUCHED ? "untouched" : title + std::to_string(number);
}

} // namespace

Subject::Subject(const std::string& library)
    : _library(
          dlopen(library.empty() ? zoltest::LoadedLibrary::path() : library.c_str(), RTLD_NOW | RTLD_LOCAL))
{
    if (_library == nullptr)
    {
        throw std::runtime_error(dlerror());
    }
}

Subject::~Subject()
{
    dlclose(_library);
}

void Subject::start(const std::string& internalRoot)
{
    const auto init = reinterpret_cast<zolLCMinitT>(dlsym(_library, "zolLCMinit"));
    if (init == nullptr || init(_host.accessor(), zoltest::configurationFor(internalRoot).c_str()) != 0 ||
        _host.record()->start(ZolStateChangeReasonNormal) != 0)
    {
        throw std::runtime_error("the component doesn't start");
    }
    _resource = &zoltest::resourceOf(*_host.record());
    _objects = &zoltest::objectsOf(*_host.record());
}

Outcome Subject::observe(const Operation& operation, unsigned long handle, unsigned long long iteratorId)
{
    _host.clear();
    Outcome outcome = done(operation, handle, iteratorId);
    outcome.hostCalls = _host.calls();
    for (const auto& message : _host.fullMessages())
    {
        outcome.messages.push_back((message.category == 1 ? "" : "wrong category: ") + message.text);
    }
    return outcome;
}

Outcome Subject::done(const Operation& operation, unsigned long handle, unsigned long long iteratorId)
{
    Outcome outcome;
    switch (operation.does)
    {
    case Does::Join:
        _host.registerParticipantCode = operation.number;
        _host.refusedInterfaces.clear();
        if (operation.odd)
        {
            _host.refusedInterfaces.insert("ZolMgmtSpiThreadContext");
        }
        outcome.code = _resource->join(handle);
        break;
    case Does::Prepare:
        outcome.code = _resource->prepare(handle);
        break;
    case Does::Commit:
        outcome.code = _resource->commit(handle);
        break;
    case Does::Abort:
        outcome.code = _resource->abort(handle);
        break;
    case Does::Finish:
        outcome.code = _resource->finish(handle);
        break;
    case Does::SetAttribute:
        outcome.code =
            _objects->setMoAttribute(handle, operation.dn.c_str(), operation.name.c_str(), nullptr);
        break;
    case Does::GetAttribute:
        return attribute(*_objects, operation, handle);
    case Does::GetAttributes:
        return attributes(*_objects, operation, handle);
    case Does::NewIterator: {
        unsigned long long id = UNTOUCHED;
        outcome.code = _objects->newMoIterator(handle, operation.dn.c_str(), operation.name.c_str(), &id);
        outcome.value = numbered("id ", id);
        break;
    }
    case Does::Next: {
        std::string never = "never written";
        char* name = never.data();
        outcome.code = _objects->nextMo(iteratorId, &name);
        outcome.value = name == nullptr ? "null" : std::string("name ") + name;
        break;
    }
    case Does::Create:
        return create(*_objects, operation, handle);
    case Does::Delete:
        outcome.code = _objects->deleteMo(handle, operation.dn.c_str());
        break;
    case Does::Action:
        return action(*_objects, operation, handle);
    case Does::FinalizeIterator:
        outcome.code = _objects->finalizeMoIterator(iteratorId);
        break;
    case Does::Exists: {
        bool exists = true;
        outcome.code = _objects->existsMo(handle, operation.dn.c_str(), &exists);
        const bool isTouched = outcome.code == ZolReturnOk || !exists;
        outcome.value = !isTouched ? "untouched" : exists ? "yes" : "no";
        break;
    }
    case Does::Count: {
        unsigned long long count = UNTOUCHED;
        outcome.code =
            _objects->countMoChildren(handle, operation.dn.c_str(), operation.name.c_str(), &count);
        outcome.value = numbered("count ", count);
        break;
    }
    default:
        throw std::logic_error("not an operation of the host");
    }
    return outcome;
}

} // namespace zolmodel
