#include "support/FakeRepository.h"

#include <atomic>
#include <cstring>
#include <stdexcept>
#include <zol/common/MoUtils.h>
#include <zol/common/ZolException.h>

namespace zoltest
{

namespace
{

std::atomic<int> releaseCount = 0;
std::atomic<int> handedOutCount = 0;

void release(ZolMoAttributeValueContainer_3* container)
{
    ++releaseCount;
    Zol::MoUtils::deleteAttributeValueContainer(container);
}

// Kept in step with what MoUtils frees: `new`, array `new` and strdup.
ZolMoAttributeValueContainer_3* makeTexts(ZolOamSpiMoAttributeType_3 type,
                                          const std::vector<std::string>& texts)
{
    auto* container = new ZolMoAttributeValueContainer_3{type, static_cast<uint32_t>(texts.size()), nullptr};
    if (!texts.empty())
    {
        container->values = new ZolMoAttributeValue_3[texts.size()];
        for (std::size_t i = 0; i < texts.size(); ++i)
        {
            container->values[i].stringValue = strdup(texts[i].c_str());
        }
    }
    return container;
}

} // namespace

Failure throwsZolException(ZolReturnT code)
{
    return [code] { throw Zol::ZolException(code, "%s", "the repository fails"); };
}

Failure throwsRuntimeError(const std::string& text)
{
    return [text] { throw std::runtime_error(text); };
}

Failure throwsForeign()
{
    struct Foreign
    {};
    return [] { throw Foreign{}; };
}

FakeRepository::FakeRepository()
{
    if (installed() != nullptr)
    {
        throw std::logic_error("there is a repository already");
    }
    releaseCount = 0;
    handedOutCount = 0;
    install(this);
}

FakeRepository::~FakeRepository()
{
    install(nullptr);
}

void FakeRepository::setChildren(const std::string& parentDn, const std::string& className,
                                 std::list<std::string> children)
{
    _children[{parentDn, className}] = std::move(children);
}

void FakeRepository::setReferences(const std::string& dn, const std::string& attribute,
                                   const std::vector<std::string>& references)
{
    setTexts(attrTypeReference, dn, attribute, references);
}

void FakeRepository::setStrings(const std::string& dn, const std::string& attribute,
                                const std::vector<std::string>& texts)
{
    setTexts(attrTypeString, dn, attribute, texts);
}

void FakeRepository::setTexts(ZolOamSpiMoAttributeType_3 type, const std::string& dn,
                              const std::string& attribute, const std::vector<std::string>& texts)
{
    _attributes[{dn, attribute}] = [type, texts](ZolMoAttributeValueResult_3& result) {
        ++handedOutCount;
        result.releaseCallback = release;
        result.container = makeTexts(type, texts);
    };
}

void FakeRepository::setNoContainer(const std::string& dn, const std::string& attribute)
{
    _attributes[{dn, attribute}] = [](ZolMoAttributeValueResult_3& result) { result = {nullptr, nullptr}; };
}

void FakeRepository::setFailure(const std::string& dn, const std::string& attribute, Failure failure)
{
    _attributes[{dn, attribute}] = [failure = std::move(failure)](ZolMoAttributeValueResult_3&) {
        failure();
    };
}

std::vector<std::string> FakeRepository::calls() const
{
    const std::scoped_lock lock(_mutex);
    return _calls;
}

void FakeRepository::clear()
{
    const std::scoped_lock lock(_mutex);
    _calls.clear();
}

int FakeRepository::releases() const
{
    return releaseCount;
}

int FakeRepository::handedOut() const
{
    return handedOutCount;
}

std::string FakeRepository::getFirstMoInstance(unsigned long txHandle, const std::string& classPath)
{
    {
        const std::scoped_lock lock(_mutex);
        _calls.push_back("getFirstMoInstance tx=" + std::to_string(txHandle) + " " + classPath);
    }
    if (firstInstanceFailure)
    {
        firstInstanceFailure();
    }
    return firstInstance;
}

std::list<std::string> FakeRepository::getChildren(unsigned long txHandle, const std::string& parentDn,
                                                   const std::string& className)
{
    {
        const std::scoped_lock lock(_mutex);
        _calls.push_back("getChildren tx=" + std::to_string(txHandle) + " " + parentDn + " " + className);
    }
    if (childrenFailure)
    {
        childrenFailure();
    }
    const auto found = _children.find({parentDn, className});
    return found == _children.end() ? std::list<std::string>{} : found->second;
}

void FakeRepository::getAttribute(unsigned long txHandle, const std::string& dn,
                                  const std::string& attributeName, ZolMoAttributeValueResult_3& result)
{
    {
        const std::scoped_lock lock(_mutex);
        _calls.push_back("getAttribute tx=" + std::to_string(txHandle) + " " + dn + " " + attributeName);
    }
    const auto found = _attributes.find({dn, attributeName});
    if (found == _attributes.end())
    {
        throw Zol::ZolException(ZolReturnNoSuch, "%s", "no such attribute");
    }
    found->second(result);
}

} // namespace zoltest
