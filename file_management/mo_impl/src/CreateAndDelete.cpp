#include "ClassNames.h"
#include "FileMTransaction.h"
#include "FileManagementConstrainsUtil.h"
#include "Links.h"
#include "LogForms.h"

#include <Poco/File.h>
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

    Poco::Path path = convertDnToPath(parentDn);
    if (!FileManagementConstrainsUtil::isDirectoryCreateAllowed(path))
    {
        addThreadContextMessage("FileGroup does not allow child FileGroup to be created");
        ZOL_PLAIN_TRACE("Not allowed to create directory, path %s, dn :%s", path.toString().c_str(),
                        parentDn);
        return -1;
    }

    std::string name = keyValue;
    reAlignWith3gppRdn(name);
    path.makeDirectory().pushDirectory(name);
    _nonComittedData.addCreatedDir(path);
    return 0;
}

ZolReturnT FileMTransaction::deleteM(const char* dn) noexcept
{
    std::string foundDn = dn;
    const Poco::Path path = convertDnToPath(replace3gppIllegalChars(foundDn) ? foundDn.c_str() : dn);
    if (isLink(path))
    {
        return -1;
    }

    const std::string className = Zol::DnUtil::getClass(dn);
    if (!Poco::File(path).exists() && !_nonComittedData.isDirCreated(path))
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
    const std::string prefix = directory.toString();
    std::vector<Poco::Path> children;
    for (const Poco::Path& created : _nonComittedData._createdDirs)
    {
        const std::string text = created.toString();
        if (text.starts_with(prefix))
        {
            ZOL_PLAIN_TRACE("Child directory %s", text.c_str());
            children.push_back(created);
        }
    }
    for (const Poco::Path& child : children)
    {
        _nonComittedData.addDeletedDir(child);
    }
}

} // namespace ZolFileManagement
