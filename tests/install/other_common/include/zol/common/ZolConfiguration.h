#pragma once

#include <Poco/DOM/Document.h>
#include <Poco/DOM/Element.h>
#include <Poco/DOM/NodeList.h>
#include <string>

namespace Zol
{

class ZolConfiguration
{
public:
    ~ZolConfiguration();

    void load(const std::string& config);
    void unload();
    Poco::XML::NodeList* getElementsByTagName(const std::string& tag);
    std::string get_text(Poco::XML::Element* element);

private:
    Poco::XML::Document* _document = nullptr;
};

} // namespace Zol
