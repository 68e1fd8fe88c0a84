#include "ConfigurationReader.h"

#include <Poco/SAX/Attributes.h>
#include <Poco/XML/ParserEngine.h>
#include <Poco/XML/XMLException.h>
#include <string>

namespace Zol
{

/// A name counts as it is written, prefix included.
bool ConfigurationReader::getFeature(const Poco::XML::XMLString& /*feature*/) const
{
    return false;
}

/// The builder offers itself for comments and for the bounds of CDATA sections. Neither is part of a text.
void ConfigurationReader::setProperty(const Poco::XML::XMLString& /*property*/, void* /*value*/) {}

void ConfigurationReader::parseMemoryNP(const char* xml, std::size_t size)
{
    Poco::XML::ParserEngine engine;
    engine.setExpandInternalEntities(false);
    engine.setExternalGeneralEntities(false);
    engine.setExternalParameterEntities(false);
    engine.setContentHandler(this);
    engine.parse(xml, size);
    if (_failure != nullptr)
    {
        std::rethrow_exception(_failure);
    }
}

template<class Event>
void ConfigurationReader::forward(Event event)
{
    if (_failure != nullptr)
    {
        return;
    }
    try
    {
        event();
    }
    catch (...)
    {
        _failure = std::current_exception();
    }
}

void ConfigurationReader::startElement(const Poco::XML::XMLString& uri, const Poco::XML::XMLString& localName,
                                       const Poco::XML::XMLString& qname,
                                       const Poco::XML::Attributes& attributes)
{
    forward([&] {
        if (++_depth > MAX_DEPTH)
        {
            throw Poco::XML::XMLException("More than " + std::to_string(MAX_DEPTH) +
                                          " elements in each other");
        }
        count(attributes);
        XMLFilterImpl::startElement(uri, localName, qname, attributes);
    });
}

void ConfigurationReader::count(const Poco::XML::Attributes& attributes)
{
    for (int i = 0; i < attributes.getLength(); ++i)
    {
        _attributes += attributes.getQName(i).size() + attributes.getValue(i).size();
    }
    if (_attributes > MAX_ATTRIBUTES)
    {
        throw Poco::XML::XMLException("More than " + std::to_string(MAX_ATTRIBUTES) + " bytes of attributes");
    }
}

void ConfigurationReader::endElement(const Poco::XML::XMLString& uri, const Poco::XML::XMLString& localName,
                                     const Poco::XML::XMLString& qname)
{
    forward([&] {
        --_depth;
        XMLFilterImpl::endElement(uri, localName, qname);
    });
}

void ConfigurationReader::characters(const Poco::XML::XMLChar text[], int start, int length)
{
    forward([&] { XMLFilterImpl::characters(text, start, length); });
}

void ConfigurationReader::processingInstruction(const Poco::XML::XMLString& target,
                                                const Poco::XML::XMLString& data)
{
    forward([&] { XMLFilterImpl::processingInstruction(target, data); });
}

void ConfigurationReader::skippedEntity(const Poco::XML::XMLString& name)
{
    forward([&] { XMLFilterImpl::skippedEntity(name); });
}

} // namespace Zol
