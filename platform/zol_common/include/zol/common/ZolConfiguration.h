#pragma once

#include <Poco/AutoPtr.h>
#include <Poco/DOM/Document.h>
#include <Poco/DOM/Element.h>
#include <Poco/DOM/NodeList.h>
#include <memory>
#include <string>
#include <vector>

namespace Zol
{

/// An XML configuration document. Not for use by several threads at a time.
class ZolConfiguration
{
public:
    ZolConfiguration();
    ZolConfiguration(const ZolConfiguration&) = delete;
    ZolConfiguration& operator=(const ZolConfiguration&) = delete;
    ~ZolConfiguration();

    /// Parses the document that `config` refers to: its text if it begins with '<' after white space,
    /// otherwise the path of its file. Entities are not expanded, nothing outside the document is read, and
    /// elements nested more than 256 deep are refused.
    /// Throws ZolException or another std::exception if it can't be had; there is no document then.
    void load(const std::string& config);

    /// Drops the document, its elements and every node list handed out; harmless when there is none.
    void unload();

    /// The elements of that name, at any depth, in document order; none without a document. The caller
    /// releases the list. The object keeps it until `unload` or its own end, so that one release too many
    /// does no harm.
    Poco::XML::NodeList* getElementsByTagName(std::string tag);

    /// The text of the element, that of its descendants included, as it stands in the document. Throws
    /// ZolException if it refers to an entity.
    std::string get_text(Poco::XML::Element* element);

private:
    class ElementList;

    Poco::AutoPtr<Poco::XML::Document> _document;
    std::vector<std::unique_ptr<ElementList>> _lists;
};

} // namespace Zol
