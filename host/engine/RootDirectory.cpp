#include "engine/RootDirectory.h"

#include "engine/DistinguishedName.h"
#include "engine/HostFailure.h"

#include <Poco/AutoPtr.h>
#include <filesystem>
#include <zol/common/ZolConfiguration.h>

namespace zolhost
{

namespace
{

/// Empty if the document names none.
std::string rootIn(const std::string& configuration)
{
    Zol::ZolConfiguration document;
    document.load(configuration);
    const Poco::AutoPtr<Poco::XML::NodeList> components(
        document.getElementsByTagName("ZolFileManagementComponent"));
    if (components->length() != 1)
    {
        return {};
    }
    auto* const component = static_cast<Poco::XML::Element*>(components->item(0));
    const Poco::AutoPtr<Poco::XML::NodeList> roots(component->getElementsByTagName("internal_root"));
    return roots->length() == 1 ? document.get_text(static_cast<Poco::XML::Element*>(roots->item(0)))
                                : std::string();
}

std::string rootByTheComponent(Host& host)
{
    const auto transaction = host.begin();
    const auto value =
        host.objects(*transaction)
            .attribute(std::string(DistinguishedName::ROOT) + ",FileMConfigData=1", "internalRoot");
    return value.values.empty() ? std::string() : std::get<std::string>(value.values.front());
}

} // namespace

std::string rootDirectoryOf(Host& host, const std::string& configuration)
{
    const std::string named = rootIn(configuration);
    const std::string root = named.empty() ? rootByTheComponent(host) : named;
    if (root.empty())
    {
        throw HostFailure("the root of the file tree isn't known");
    }
    std::string path = std::filesystem::absolute(root).lexically_normal().string();
    while (path.size() > 1 && path.ends_with('/'))
    {
        path.pop_back();
    }
    return path == "/" ? "" : path;
}

} // namespace zolhost
