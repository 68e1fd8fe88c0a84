#include "FileManagementConfigHandler.h"

#include "LogForms.h"

#include <Poco/AutoPtr.h>
#include <zol/common/ZolException.h>

namespace ZolFileManagementCommon
{

FileManagementConfigHandler::FileManagementConfigHandler(const std::string& componentName)
    : _componentName(componentName)
{}

FileManagementConfigHandler::~FileManagementConfigHandler() = default;

int FileManagementConfigHandler::load(const std::string& config)
{
    ZOL_ENTER_TRACE(" >> \n%s", config.c_str());
    Zol::ZolConfiguration configuration;
    Poco::XML::NodeList* components = nullptr;
    try
    {
        configuration.unload();
        configuration.load(config);
        components = configuration.getElementsByTagName(_componentName);
        if (components->length() == 0)
        {
            components->release();
            throw Zol::ZolException("No ZolFileManagementComponent configuration found");
        }
        if (components->length() > 1)
        {
            components->release();
            throw Zol::ZolException("Multiple ZolFileManagementComponent configurations found");
        }
        auto* component = static_cast<Poco::XML::Element*>(components->item(0));
        const std::string value = getElementValue(configuration, component, "internal_root");
        if (!value.empty())
        {
            ZOL_PLAIN_TRACE("ZolFileManagementComponent/ZolFileSystem/internal_root tag found: %s.",
                            value.c_str());
        }
        _internalRoot = value;
        components->release();
    }
    catch (const std::exception& failure)
    {
        ZOL_SEVERITY_LOG(4, "Caught exception: %s", failure.what());
        // where the number of components was wrong this is the second release, which the configuration allows
        // for
        if (components != nullptr)
        {
            components->release();
        }
        ZOL_EXIT_TRACE(" << ");
        return -1;
    }
    ZOL_EXIT_TRACE(" << ");
    return 0;
}

void FileManagementConfigHandler::getInternalRoot(std::string& root)
{
    root = _internalRoot;
}

std::string FileManagementConfigHandler::getElementValue(Zol::ZolConfiguration& configuration,
                                                         Poco::XML::Element* element, const std::string& tag)
{
    const Poco::AutoPtr<Poco::XML::NodeList> elements(element->getElementsByTagName(tag));
    if (elements->length() == 1 && elements->item(0) != nullptr)
    {
        return configuration.get_text(static_cast<Poco::XML::Element*>(elements->item(0)));
    }
    return {};
}

} // namespace ZolFileManagementCommon
