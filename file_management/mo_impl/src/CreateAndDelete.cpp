#include "ClassNames.h"
#include "FileMTransaction.h"
#include "FileManagementConstrainsUtil.h"
#include "Links.h"
#include "LiteralPath.h"
#include "LogForms.h"

#include <Poco/File.h>
#include <sys/stat.h>
#include <zol/common/DnUtil.h>

namespace ZolFileManagement
{

using ZolFileManagementCommon::FileManagementConstrainsUtil;

ZolReturnT FileMTransaction::create(const char* parentDn, const char* className, const char* keyAttribute,
                                    const char* keyValue) noexcept
{
    if (className != fileGroupClassName || keyAttribute != fileGroupIdAttrName)
    {
        return -1;
    }

    std::string message;
    if (illegalNaming(keyValue, message))
    {
        addThreadContextMessage(message);
        ZOL_PLAIN_TRACE("%s: %s, dn :%s", message.c_str(), keyValue, parentDn);
        return -1;
    }

    std::string directory = convertDnToText(parentDn);
    if (!FileManagementConstrainsUtil::isDirectoryCreateAllowedIn(directory))
    {
        addThreadContextMessage("FileGroup does not allow child FileGroup to be created");
        ZOL_PLAIN_TRACE("Not allowed to create directory, path %s, dn :%s", directory.c_str(), parentDn);
        return -1;
    }

    std::string name = keyValue;
    reAlignWith3gppRdn(name);
    if (!directory.ends_with('/')) // the parent is a file by its class
    {
        directory = literalPath(directory).makeDirectory().toString();
    }
    _nonComittedData.addCreatedDirText(directory + name + "/");
    return 0;
}

ZolReturnT FileMTransaction::deleteM(const char* dn) noexcept
{
    std::string foundDn = dn;
    // what can't be searched for needs no look
    const bool isFound = foundDn.find("?\?") != std::string::npos && replace3gppIllegalChars(foundDn);
    const Poco::Path path = convertDnToPath(isFound ? foundDn.c_str() : dn);
    const mode_t type = entryType(Poco::Path(path).makeFile().toString());
    if (S_ISLNK(type))
    {
        return -1;
    }

    const std::string className = Zol::DnUtil::getClass(dn);
    const bool isSeen = type != 0;
    if (!isSeen && !Poco::File(path).exists() && !_nonComittedData.isDirCreated(path))
    {
        return -2;
    }
    if (className == fileGroupClassName)
    {
        if (!FileManagementConstrainsUtil::isDirectoryDeleteAllowed(path))
        {
            addThreadContextMessage("FileGroup is not allowed to be deleted");
            return -1;
        }
        if (isDirContainingFiles(path))
        {
            return -1;
        }
        _nonComittedData.addDeletedDir(path);
        withdrawCreatedDirsBelow(path);
        return 0;
    }
    if (className == fileInformationClassName)
    {
        _nonComittedData.addDeletedFile(path);
        return 0;
    }
    ZOL_SEVERITY_LOG(3, "No such MO class handled :%s", className.c_str());
    return -1;
}

void FileMTransaction::withdrawCreatedDirsBelow(const Poco::Path& directory)
{
    for (const std::string& text : _nonComittedData._createdDirs.takeStartingWith(directory.toString()))
    {
        ZOL_PLAIN_TRACE("Child directory %s", text.c_str());
    }
}

} // namespace ZolFileManagement
