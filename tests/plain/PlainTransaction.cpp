#include "plain/PlainTransaction.h"

#include "FileManagementConstrainsUtil.h"
#include "LiteralPath.h"
#include "LogForms.h"
#include "plain/PlainNames.h"
#include "plain/PlainReads.h"

#include <Poco/Exception.h>
#include <Poco/File.h>
#include <libgen.h>
#include <sys/stat.h>
#include <utility>
#include <zol/common/DnUtil.h>

namespace zoltest
{

using ZolFileManagement::literalPath;
using ZolFileManagementCommon::FileManagementConstrainsUtil;

namespace
{

void removeAll(const PlainChanges::Paths& paths)
{
    for (const Poco::Path& path : paths)
    {
        try
        {
            Poco::File(path).remove(true);
        }
        catch (...)
        {
            continue;
        }
    }
}

// Poco::File::createDirectories, but for texts that it would read anew.
void createDirectories(const Poco::Path& directory)
{
    Poco::File file(directory);
    if (file.exists())
    {
        return;
    }
    if (directory.depth() > 1)
    {
        createDirectories(directory.parent());
    }
    try
    {
        file.createDirectory();
    }
    catch (const Poco::FileExistsException&)
    {
        return;
    }
}

void create(const Poco::Path& path)
{
    createDirectories(path);
    const std::string directory = path.toString();
    std::string parentOfIt = directory;
    struct stat parent
    {};
    const bool isBelowSetgid =
        ::stat(::dirname(parentOfIt.data()), &parent) == 0 && (parent.st_mode & S_ISGID) != 0;
    if (::chmod(directory.c_str(), isBelowSetgid ? 02770 : 0770) != 0)
    {
        ZOL_SEVERITY_LOG(4, "Unable to modify the permissions of %s", directory.c_str());
    }
}

} // namespace

Poco::Path plainPathOf(const std::string& internalRoot, const std::string& dn)
{
    std::string rel;
    std::size_t mark = dn.find("FileGroup");
    std::size_t equals = dn.find('=', mark);
    while (equals != std::string::npos)
    {
        const std::size_t comma = dn.find(',', equals);
        const std::size_t end = comma == std::string::npos ? dn.size() : comma;
        std::string value = dn.substr(equals + 1, end - equals - 1);
        if (dn.find("FileGroup", mark) != std::string::npos)
        {
            plainReAlign(value);
        }
        else if (dn.find("FileInformation", mark) == std::string::npos)
        {
            return literalPath(rel + "/" + value);
        }
        rel += "/" + value;
        equals = dn.find('=', end);
        mark = end;
    }
    Poco::Path path = literalPath(internalRoot + (rel.empty() ? "/" : rel));
    return Zol::DnUtil::getClass(dn) == "FileInformation" ? path.makeFile() : path.makeDirectory();
}

PlainTransaction::PlainTransaction(std::string internalRoot)
    : _root(std::move(internalRoot))
{}

ZolReturnT PlainTransaction::create(const std::string& parentDn, const std::string& name)
{
    Poco::Path path = pathOf(parentDn);
    if (!FileManagementConstrainsUtil::isDirectoryCreateAllowed(path))
    {
        ZOL_PLAIN_TRACE("Not allowed to create directory, path %s, dn :%s", path.toString().c_str(),
                        parentDn.c_str());
        return -1;
    }
    std::string nameOnDisk = name;
    plainReAlign(nameOnDisk);
    _changes.addCreatedDir(path.makeDirectory().pushDirectory(nameOnDisk));
    return 0;
}

ZolReturnT PlainTransaction::deleteM(const std::string& dn)
{
    std::string foundDn = dn;
    const bool isFound =
        plainNameSearch(foundDn, [this](const std::string& candidate) { return pathOf(candidate); });
    const Poco::Path path = pathOf(isFound ? foundDn : dn);
    if (isPlainLink(path))
    {
        return -1;
    }
    const std::string className = Zol::DnUtil::getClass(dn);
    if (!Poco::File(path).exists() && !_changes.createdDirs.contains(path))
    {
        return -2;
    }
    if (className == "FileInformation")
    {
        _changes.deletedFiles.insert(path);
        return 0;
    }
    if (className != "FileGroup")
    {
        ZOL_SEVERITY_LOG(3, "No such MO class handled :%s", className.c_str());
        return -1;
    }
    if (!FileManagementConstrainsUtil::isDirectoryDeleteAllowed(path) || plainContainsFiles(path, _changes))
    {
        return -1;
    }
    _changes.addDeletedDir(path);
    const PlainChanges::Paths created = _changes.createdDirs;
    for (const Poco::Path& each : created)
    {
        if (each.toString().starts_with(path.toString()))
        {
            ZOL_PLAIN_TRACE("Child directory %s", each.toString().c_str());
            _changes.addDeletedDir(each);
        }
    }
    return 0;
}

ZolReturnT PlainTransaction::remove(const std::string& dn)
{
    const Poco::Path path = pathOf(dn);
    if (isPlainLink(path))
    {
        return -1;
    }
    _changes.addDeletedDir(path);
    return 0;
}

bool PlainTransaction::removeFiles(const Poco::Path& directory, const std::string& expression)
{
    return plainRemoveFiles(directory, expression, _changes);
}

ZolReturnT PlainTransaction::commit()
{
    ZOL_ENTER_TRACE(" >> ");
    ZolReturnT result = 0;
    try
    {
        removeAll(_changes.deletedFiles);
        for (const Poco::Path& path : _changes.createdDirs)
        {
            zoltest::create(path);
        }
        removeAll(_changes.deletedDirs);
    }
    catch (const std::exception& failure)
    {
        ZOL_PLAIN_TRACE("FileMTransaction::commit, unexpected exception : %s", failure.what());
        result = -1;
    }
    _changes = {};
    ZOL_EXIT_TRACE(" << ");
    return result;
}

} // namespace zoltest
