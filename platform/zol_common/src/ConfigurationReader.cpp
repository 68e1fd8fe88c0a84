#include "ConfigurationReader.h"

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
    _depth = 0;
    Poco::XML::ParserEngine engine;
    engine.setExpandInternalEntities(false);
    engine.setExternalGeneralEntities(false);
    engine.setExternalParameterEntities(false);
    engine.setContentHandler(this);
    engine.parse(xml, size);
}

void ConfigurationReader::startElement(const Poco::XML::XMLString& uri, const Poco::XML::XMLString& localName,
                                       const Poco::XML::XMLString& qname,
                                       const Poco::XML::Attributes& attributes)
{
    if (++_depth > MAX_DEPTH)
    {
        throw Poco::XML::XMLException("More than " + std::to_string(MAX_DEPTH) + " elements in each other");
    }
    XMLFilterImpl::startElement(uri, localName, qname, attributes);
}

void ConfigurationReader::endElement(const Poco::XML::XMLString& uri, const Poco::XML::XMLString& localName,
                                     const Poco::XML::XMLString& qname)
{
    --_depth;
    XMLFilterImpl::endElement(uri, localName, qname);
}

} // namespace Zol
