#pragma once

#include <Poco/SAX/XMLFilterImpl.h>

namespace Zol
{

/// Feeds a document builder with elements, texts and references to entities. No entity is expanded in a text,
/// nothing outside the document is read, and elements nested too deeply for the recursion of a document's
/// users are refused.
class ConfigurationReader : public Poco::XML::XMLFilterImpl
{
public:
    static constexpr int MAX_DEPTH = 256;

    using Poco::XML::XMLFilterImpl::parse;
    using Poco::XML::XMLFilterImpl::setProperty;

    bool getFeature(const Poco::XML::XMLString& feature) const override;
    void setProperty(const Poco::XML::XMLString& property, void* value) override;
    void parseMemoryNP(const char* xml, std::size_t size) override;

    void startElement(const Poco::XML::XMLString& uri, const Poco::XML::XMLString& localName,
                      const Poco::XML::XMLString& qname, const Poco::XML::Attributes& attributes) override;
    void endElement(const Poco::XML::XMLString& uri, const Poco::XML::XMLString& localName,
                    const Poco::XML::XMLString& qname) override;

private:
    int _depth = 0;
};

} // namespace Zol
