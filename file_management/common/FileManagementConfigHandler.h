#pragma once

#include <string>
#include <zol/common/ZolConfiguration.h>

namespace ZolFileManagementCommon
{

/// Finds the internal root in the configuration document, for the duration of one load. The document stands
/// in a configuration object of its own: what the base holds is only there for `unload`.
class FileManagementConfigHandler : public Zol::ZolConfiguration
{
public:
    explicit FileManagementConfigHandler(const std::string& componentName);
    FileManagementConfigHandler(const FileManagementConfigHandler&) = delete;
    FileManagementConfigHandler& operator=(const FileManagementConfigHandler&) = delete;
    virtual ~FileManagementConfigHandler();

    /// Reads the document that `config` refers to. 0, or -1 after a failure, which is logged and leaves the
    /// root as it was. A document without a value, or with more than one, gives the empty root and is no
    /// failure.
    int load(const std::string& config);

    void getInternalRoot(std::string& root);

    /// Text of the one descendant of `element` with that tag; empty if there is none or more than one.
    std::string getElementValue(Zol::ZolConfiguration& configuration, Poco::XML::Element* element,
                                const std::string& tag);

private:
    std::string _componentName;
    std::string _internalRoot;
};

} // namespace ZolFileManagementCommon
