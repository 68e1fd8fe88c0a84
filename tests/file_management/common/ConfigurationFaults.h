#pragma once

#include <Poco/DOM/NodeList.h>
#include <functional>

namespace zoltest
{

/// Stands between the component and the configuration document, until the end of this object. At most one
/// object lives at a time, in a process with one thread.
class ConfigurationFaults
{
public:
    ConfigurationFaults();
    ConfigurationFaults(const ConfigurationFaults&) = delete;
    ConfigurationFaults& operator=(const ConfigurationFaults&) = delete;
    ~ConfigurationFaults();

    std::function<void()> onGetText; ///< called before an element's text is read; may throw
    /// Gives the component another list than the document's, which lives as long as the document.
    std::function<Poco::XML::NodeList*(Poco::XML::NodeList& list)> replaceList;
};

} // namespace zoltest
