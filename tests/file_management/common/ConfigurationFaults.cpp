#include "ConfigurationFaults.h"

#include <Poco/DOM/Element.h>
#include <string>
#include <zol/common/ZolConfiguration.h>

namespace zoltest
{

namespace
{

ConfigurationFaults* live = nullptr;

} // namespace

ConfigurationFaults::ConfigurationFaults()
{
    live = this;
}

ConfigurationFaults::~ConfigurationFaults()
{
    live = nullptr;
}

} // namespace zoltest

using Poco::XML::NodeList;
using zoltest::live;

// The linker sends this program's calls of the two functions here.

// Zol::ZolConfiguration::get_text(Poco::XML::Element*)
std::string realGetText(Zol::ZolConfiguration* configuration, Poco::XML::Element* element) __asm__(
    "__real__ZN3Zol16ZolConfiguration8get_textB5cxx11EPN4Poco3XML7ElementE");
std::string wrappedGetText(Zol::ZolConfiguration* configuration, Poco::XML::Element* element) __asm__(
    "__wrap__ZN3Zol16ZolConfiguration8get_textB5cxx11EPN4Poco3XML7ElementE");
std::string wrappedGetText(Zol::ZolConfiguration* configuration, Poco::XML::Element* element)
{
    if (live != nullptr && live->onGetText)
    {
        live->onGetText();
    }
    return realGetText(configuration, element);
}

// Zol::ZolConfiguration::getElementsByTagName(std::string)
NodeList* realGetElementsByTagName(Zol::ZolConfiguration* configuration, std::string tag) __asm__(
    "__real__ZN3Zol16ZolConfiguration20getElementsByTagNameENSt7__cxx1112basic_stringIcSt11char_"
    "traitsIcESaIcEEE");
NodeList* wrappedGetElementsByTagName(Zol::ZolConfiguration* configuration, std::string tag) __asm__(
    "__wrap__ZN3Zol16ZolConfiguration20getElementsByTagNameENSt7__cxx1112basic_stringIcSt11char_"
    "traitsIcESaIcEEE");
NodeList* wrappedGetElementsByTagName(Zol::ZolConfiguration* configuration, std::string tag)
{
    NodeList* const list = realGetElementsByTagName(configuration, std::move(tag));
    return live != nullptr && live->replaceList ? live->replaceList(*list) : list;
}
