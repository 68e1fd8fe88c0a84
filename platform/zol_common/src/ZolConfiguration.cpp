#include "ConfigurationReader.h"
#include "ConfigurationText.h"

#include <Poco/AutoPtr.h>
#include <Poco/DOM/DOMBuilder.h>
#include <Poco/DOM/NodeFilter.h>
#include <Poco/DOM/NodeIterator.h>
#include <Poco/Exception.h>
#include <Poco/XML/NamePool.h>
#include <algorithm>
#include <utility>
#include <zol/common/ZolConfiguration.h>
#include <zol/common/ZolException.h>

namespace Zol
{

namespace
{

Poco::AutoPtr<Poco::XML::NamePool> makeNamePool(const std::string& text)
{
    // The pool doesn't grow. Every element's name follows a '<', every attribute's precedes a '='. The
    // upper limit is there because a pool takes a hundred times the bytes that are counted here.
    constexpr std::ptrdiff_t USUAL_SIZE = 509;
    constexpr std::ptrdiff_t MAX_SIZE = 16'381;
    const std::ptrdiff_t names = std::count_if(
        text.begin(), text.end(), [](char character) { return character == '<' || character == '='; });
    return new Poco::XML::NamePool(static_cast<unsigned long>(std::clamp(names, USUAL_SIZE, MAX_SIZE)));
}

} // namespace

/// The elements as they were when the list was asked for. The configuration object owns it.
class ZolConfiguration::ElementList : public Poco::XML::NodeList
{
public:
    explicit ElementList(std::vector<Poco::XML::Node*> elements)
        : _elements(std::move(elements))
    {
        // One reference is the caller's and one the owner's. The others are there for releases too many: the
        // last release would delete the list under its owner.
        constexpr int REFERENCES = 1000;
        for (int i = 1; i < REFERENCES; ++i)
        {
            duplicate();
        }
    }

    Poco::XML::Node* item(unsigned long index) const override
    {
        return index < _elements.size() ? _elements[index] : nullptr;
    }

    unsigned long length() const override { return _elements.size(); }

    /// Nothing to do: the owner ends the list.
    void autoRelease() override {}

private:
    std::vector<Poco::XML::Node*> _elements;
};

ZolConfiguration::ZolConfiguration() = default;

ZolConfiguration::~ZolConfiguration() = default;

void ZolConfiguration::load(const std::string& config)
{
    unload();
    const auto [text, name] = readConfigurationText(config);
    try
    {
        ConfigurationReader reader;
        Poco::XML::DOMBuilder builder(reader, makeNamePool(text));
        _document = builder.parseMemoryNP(text.data(), text.size());
    }
    catch (const Poco::Exception& failure)
    {
        // its what() is no more than the name of its class
        throw ZolException("Configuration document %s can't be parsed: %s", name.c_str(),
                           failure.displayText().c_str());
    }
}

void ZolConfiguration::unload()
{
    _lists.clear();
    _document.reset();
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): callers rely on the signature
Poco::XML::NodeList* ZolConfiguration::getElementsByTagName(std::string tag)
{
    std::vector<Poco::XML::Node*> elements;
    if (!_document.isNull())
    {
        Poco::XML::NodeIterator every(_document.get(), Poco::XML::NodeFilter::SHOW_ELEMENT);
        while (Poco::XML::Node* const element = every.nextNode())
        {
            if (element->nodeName() == tag)
            {
                elements.push_back(element);
            }
        }
    }
    return _lists.emplace_back(std::make_unique<ElementList>(std::move(elements))).get();
}

std::string ZolConfiguration::get_text(Poco::XML::Element* element)
{
    Poco::XML::NodeIterator references(element, Poco::XML::NodeFilter::SHOW_ENTITY_REFERENCE);
    if (const Poco::XML::Node* const reference = references.nextNode())
    {
        throw ZolException("Element %s refers to entity %s, and entities are not expanded",
                           element->nodeName().c_str(), reference->nodeName().c_str());
    }
    return element->innerText();
}

} // namespace Zol
