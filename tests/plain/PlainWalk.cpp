#include "plain/PlainWalk.h"

#include "FileManagementConstrainsUtil.h"
#include "LiteralPath.h"
#include "LogForms.h"
#include "UnexpectedException.h"

#include <Poco/File.h>
#include <array>
#include <cerrno>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace zoltest
{

using ZolFileManagementCommon::FileManagementConstrainsUtil;

namespace
{

std::string targetOf(const std::string& link)
{
    std::array<char, 4096> target{};
    const ssize_t length = ::readlink(link.c_str(), target.data(), target.size() - 1);
    if (length < 0)
    {
        const int error = errno;
        ZOL_SEVERITY_LOG(3, "Linked target path does not exist, error %d, link path :%s", error,
                         link.c_str());
        return {};
    }
    return {target.data(), static_cast<std::size_t>(length)};
}

bool refersToDirectory(const std::string& link)
{
    const std::string target = targetOf(link);
    const Poco::File file(target);
    if (!file.exists())
    {
        ZOL_SEVERITY_LOG(4, "Link <%s> refers to a non existing target <%s>, treated as a file", link.c_str(),
                         target.c_str());
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
    ZOL_SEVERITY_LOG(4, "Link <%s> refers to a link <%s>, treated as a file", link.c_str(), target.c_str());
    return false;
}

void withdrawOrAdd(const Poco::Path& path, PlainChanges::Paths& opposite, PlainChanges::Paths& intended)
{
    if (opposite.erase(path) == 0)
    {
        intended.insert(path);
    }
}

} // namespace

void PlainChanges::addCreatedDir(const Poco::Path& path)
{
    withdrawOrAdd(path, deletedDirs, createdDirs);
}

void PlainChanges::addDeletedDir(const Poco::Path& path)
{
    withdrawOrAdd(path, createdDirs, deletedDirs);
}

bool isPlainLink(const Poco::Path& path)
{
    const std::string text = Poco::Path(path).makeFile().toString();
    struct stat status
    {};
    if (::lstat(text.c_str(), &status) != 0)
    {
        const int reason = errno;
        ZOL_PLAIN_TRACE("Warning: could not stat %s, reason :%d", text.c_str(), reason);
        return false;
    }
    return S_ISLNK(status.st_mode);
}

PlainWalk::PlainWalk(const Poco::Path& directory, const PlainChanges& changes, bool iterateFiles)
    : _iterateFiles(iterateFiles)
    , _directory(directory)
    , _changes(changes)
{
    if (!iterateFiles)
    {
        _pendingDirs = changes.createdDirs;
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

bool PlainWalk::getNext(Poco::Path& entry)
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

bool PlainWalk::getNextFromFileSystem(Poco::Path& entry)
{
    const Poco::DirectoryIterator end;
    while (_dirIterator != end)
    {
        const Poco::File file = *_dirIterator;
        ++_dirIterator;
        Poco::Path path = ZolFileManagement::literalPath(file.path());

        if (isPlainLink(path) && !refersToDirectory(path.toString()))
        {
            continue;
        }
        bool wanted = false;
        if (file.isFile() && !FileManagementConstrainsUtil::isHidden(path))
        {
            _lastIsFile = true;
            wanted = _iterateFiles;
        }
        else if (file.isDirectory() || (isPlainLink(path) && refersToDirectory(path.toString())))
        {
            path.makeDirectory();
            _lastIsFile = false;
            wanted = !_iterateFiles;
        }
        if (wanted && !_changes.deletedFiles.contains(path) && !_changes.deletedDirs.contains(path))
        {
            entry = path;
            return true;
        }
    }
    return false;
}

bool PlainWalk::getNextFromCreatedDirs(Poco::Path& entry)
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

void PlainWalk::clear()
{
    // its assignment would leave the name of the last entry, by which it is compared with the end
    std::destroy_at(&_dirIterator);
    std::construct_at(&_dirIterator);

    _pendingDirs.clear();
    _directory = Poco::Path();
}

} // namespace zoltest
