#pragma once

#include <Poco/SAX/XMLFilterImpl.h>
#include <exception>

namespace Zol
{

/// Feeds a document builder with elements, texts and references to entities. No entity is expanded in a text,
/// nothing outside the document is read, and elements nested too deeply for the recursion of a document's
/// users are refused, as are attributes that declarations make much of. For one document.
class ConfigurationReader : public Poco::XML::XMLFilterImpl
{
public:
    static constexpr int MAX_DEPTH = 256;
    /// Bytes of names and values, as declarations and entities have made them.
    static constexpr std::size_t MAX_ATTRIBUTES = 1U << 20U;

    using Poco::XML::XMLFilterImpl::parse;
    using Poco::XML::XMLFilterImpl::setProperty;

    bool getFeature(const Poco::XML::XMLString& feature) const override;
    void setProperty(const Poco::XML::XMLString& property, void* value) override;
    void parseMemoryNP(const char* xml, std::size_t size) override;

    void startElement(const Poco::XML::XMLString& uri, const Poco::XML::XMLString& localName,
                      const Poco::XML::XMLString& qname, const Poco::XML::Attributes& attributes) override;
    void endElement(const Poco::XML::XMLString& uri, const Poco::XML::XMLString& localName,
                    const Poco::XML::XMLString& qname) override;
    void characters(const Poco::XML::XMLChar text[], int start, int length) override;
    void processingInstruction(const Poco::XML::XMLString& target, const Poco::XML::XMLString& data) override;
    void skippedEntity(const Poco::XML::XMLString& name) override;

private:
    /// The parser's C code must return before a failure goes on, or it is never freed: what `event` throws is
    /// kept until then, and no further event comes through.
    template<class Event>
    void forward(Event event);

    void count(const Poco::XML::Attributes& attributes);

    int _depth = 0;
    std::size_t _attributes = 0; // bytes so far
    std::exception_ptr _failure;
};

} // namespace Zol
