#include "FileManagementConstrainsUtil.h"

#include <Poco/File.h>

namespace ZolFileManagementCommon
{

namespace
{

const std::string noHousekeepingMarker(".filemnohousekeeping");
const std::string noDirectoryCreateMarker(".filemnodirectorycreate");
const std::string noDirectoryDeleteMarker(".filemnodirectorydelete");

Poco::File markerIn(const std::string& directory, const std::string& marker)
{
    return {directory + "/" + marker};
}

Poco::File markerIn(const Poco::Path& directory, const std::string& marker)
{
    return markerIn(directory.toString(), marker);
}

} // namespace

bool FileManagementConstrainsUtil::isNoHousekeeping(const std::string& name)
{
    return name == noHousekeepingMarker;
}

bool FileManagementConstrainsUtil::isNoDirectoryCreate(const std::string& name)
{
    return name == noDirectoryCreateMarker;
}

bool FileManagementConstrainsUtil::isNoDirectoryDelete(const std::string& name)
{
    return name == noDirectoryDeleteMarker;
}

bool FileManagementConstrainsUtil::isHidden(const Poco::Path& path)
{
    return isHiddenName(path.getFileName());
}

bool FileManagementConstrainsUtil::isHiddenName(std::string_view name)
{
    return name == noHousekeepingMarker || name == noDirectoryCreateMarker || name == noDirectoryDeleteMarker;
}

bool FileManagementConstrainsUtil::isDirectoryCreateAllowed(const Poco::Path& path)
{
    return isDirectoryCreateAllowedIn(path.toString());
}

bool FileManagementConstrainsUtil::isDirectoryCreateAllowedIn(const std::string& directory)
{
    return !markerIn(directory, noDirectoryCreateMarker).exists();
}

bool FileManagementConstrainsUtil::isDirectoryDeleteAllowed(const Poco::Path& path)
{
    const Poco::File deleteMarker = markerIn(path, noDirectoryDeleteMarker);
    const Poco::File createMarker = markerIn(path, noDirectoryCreateMarker);
    const Poco::File housekeepingMarker = markerIn(path, noHousekeepingMarker);
    return !deleteMarker.exists() && !createMarker.exists() && !housekeepingMarker.exists();
}

bool FileManagementConstrainsUtil::isHouskeeepingAllowed(const Poco::Path& path)
{
    return !markerIn(path, noHousekeepingMarker).exists();
}

} // namespace ZolFileManagementCommon
