#pragma once

#include <Poco/Path.h>
#include <string>
#include <string_view>

namespace ZolFileManagementCommon
{

/// Marker files in a directory restrict what may be done to it and are never shown. Only the directory given
/// is looked at, never one above or below it. A location that can't be examined has no markers.
class FileManagementConstrainsUtil
{
public:
    FileManagementConstrainsUtil() = delete;

    static bool isNoHousekeeping(const std::string& name);
    static bool isNoDirectoryCreate(const std::string& name);
    static bool isNoDirectoryDelete(const std::string& name);

    /// The file name of the path is a marker's; a path in directory form is never hidden.
    static bool isHidden(const Poco::Path& path);
    static bool isHiddenName(std::string_view name);

    static bool isDirectoryCreateAllowed(const Poco::Path& path);
    static bool isDirectoryCreateAllowedIn(const std::string& directory); ///< for the text of a path
    /// Any marker protects its directory from deletion, which would remove the marker.
    static bool isDirectoryDeleteAllowed(const Poco::Path& path);
    static bool isHouskeeepingAllowed(const Poco::Path& path);
};

} // namespace ZolFileManagementCommon
