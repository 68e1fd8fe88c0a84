#include "FileGroupIterator.h"

#include "FileManagementConstrainsUtil.h"
#include "Links.h"
#include "LiteralPath.h"
#include "LogForms.h"
#include "UnexpectedException.h"

#include <Poco/File.h>
#include <array>
#include <cerrno>
#include <memory>
#include <unistd.h>

namespace ZolFileManagement
{

using ZolFileManagementCommon::FileManagementConstrainsUtil;

FileGroupIterator::FileGroupIterator(const Poco::Path& directory, const NonComittedData& changes,
                                     bool iterateFiles) noexcept
    : _iterateFiles(iterateFiles)
    , _directory(directory)
    , _changes(changes)
{
    if (!iterateFiles)
    {
        _pendingDirs = changes._createdDirs;
    }
    try
    {
        if (Poco::File(directory).exists())
        {
            _dirIterator = Poco::DirectoryIterator(directory);
        }
    }
    catch (const std::exception& failure)
    {
        ZOL_TRACE_UNEXPECTED_EXCEPTION(failure);
        clear();
    }
}

bool FileGroupIterator::getNext(Poco::Path& entry) noexcept
{
    try
    {
        if (getNextFromFileSystem(entry) || getNextFromCreatedDirs(entry))
        {
            return true;
        }
    }
    catch (const std::exception& failure)
    {
        ZOL_TRACE_UNEXPECTED_EXCEPTION(failure);
    }
    clear();
    return false;
}

bool FileGroupIterator::getNextFromFileSystem(Poco::Path& entry)
{
    const Poco::DirectoryIterator end;
    while (_dirIterator != end)
    {
        const Poco::File file = *_dirIterator;
        ++_dirIterator;
        Poco::Path path = literalPath(file.path());

        if (isLink(path) && !isLinkReferringToDirectory(path.toString()))
        {
            continue;
        }
        bool wanted = false;
        if (file.isFile() && !FileManagementConstrainsUtil::isHidden(path))
        {
            _lastIsFile = true;
            wanted = _iterateFiles;
        }
        else if (file.isDirectory() || (isLink(path) && isLinkReferringToDirectory(path.toString())))
        {
            path.makeDirectory();
            _lastIsFile = false;
            wanted = !_iterateFiles;
        }
        if (wanted && !_changes._deletedFiles.contains(path) && !_changes._deletedDirs.contains(path))
        {
            entry = path;
            return true;
        }
    }
    return false;
}

bool FileGroupIterator::getNextFromCreatedDirs(Poco::Path& entry)
{
    while (!_pendingDirs.empty() && !_iterateFiles)
    {
        const Poco::Path candidate = *_pendingDirs.begin();
        _pendingDirs.erase(_pendingDirs.begin());
        if (candidate.parent().toString() == _directory.toString())
        {
            entry = candidate;
            return true;
        }
    }
    return false;
}

void FileGroupIterator::clear()
{
    // its assignment would leave the name of the last entry, by which it is compared with the end
    std::destroy_at(&_dirIterator);
    std::construct_at(&_dirIterator);

    _pendingDirs.clear();
    _directory = Poco::Path();
}

bool FileGroupIterator::isLinkReferringToDirectory(const std::string& linkPath)
{
    const std::string target = getLinkTarget(linkPath);
    const Poco::File file(target);
    if (!file.exists())
    {
        ZOL_SEVERITY_LOG(4, "Link <%s> refers to a non existing target <%s>, treated as a file",
                         linkPath.c_str(), target.c_str());
        return false;
    }
    if (file.isDirectory())
    {
        return true;
    }
    if (file.isFile())
    {
        return false;
    }
    ZOL_SEVERITY_LOG(4, "Link <%s> refers to a link <%s>, treated as a file", linkPath.c_str(),
                     target.c_str());
    return false;
}

std::string FileGroupIterator::getLinkTarget(const std::string& linkPath)
{
    std::array<char, 4096> target{};
    const ssize_t length = ::readlink(linkPath.c_str(), target.data(), target.size() - 1);
    if (length < 0)
    {
        const int error = errno;
        ZOL_SEVERITY_LOG(3, "Linked target path does not exist, error %d, link path :%s", error,
                         linkPath.c_str());
        return {};
    }
    return {target.data(), static_cast<std::size_t>(length)};
}

} // namespace ZolFileManagement
