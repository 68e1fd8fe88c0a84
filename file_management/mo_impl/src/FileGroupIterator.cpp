#include "FileGroupIterator.h"

#include "FileManagementConstrainsUtil.h"
#include "Links.h"
#include "LiteralPath.h"
#include "LogForms.h"
#include "UnexpectedException.h"

#include <Poco/File.h>
#include <array>
#include <cerrno>
#include <climits>
#include <sys/stat.h>
#include <unistd.h>

namespace ZolFileManagement
{

using ZolFileManagementCommon::FileManagementConstrainsUtil;

FileGroupIterator::FileGroupIterator(std::string directory, const NonComittedData& changes, bool iterateFiles,
                                     Span span) noexcept
    : _iterateFiles(iterateFiles)
    , _span(span)
    , _directory(std::move(directory))
    , _changes(changes)
{
    if (!iterateFiles)
    {
        _pendingDirs = changes._createdDirs.childrenOfText(_directory);
    }
    try
    {
        open();
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

bool FileGroupIterator::getNext(std::string& name) noexcept
{
    try
    {
        if (findOnDisk())
        {
            name = _name;
            return true;
        }
        if (Poco::Path entry; getNextFromCreatedDirs(entry))
        {
            name = entry.makeFile().getFileName();
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
    if (!findOnDisk())
    {
        return false;
    }
    entry = literalPath(textOfLast());
    return true;
}

void FileGroupIterator::open()
{
    const bool hasSlashBehind = _directory.size() > 1 && _directory.ends_with('/');
    if (hasSlashBehind) // which would count in a path that is nearly too long
    {
        _directory.pop_back();
    }
    if (!_entries.open(_directory))
    {
        const int reason = errno;
        if (Poco::File(_directory).exists())
        {
            _hasMoreThanFiles = true;
            errno = reason;
            Poco::File::handleLastError(_directory);
        }
    }
    if (hasSlashBehind)
    {
        _directory += '/';
    }
    else
    {
        _directory = literalPath(_directory).makeDirectory().toString();
    }
}

std::string FileGroupIterator::textOfLast() const
{
    return _directory + _name + (_lastIsFile ? "" : "/");
}

bool FileGroupIterator::findOnDisk()
{
    while (!_entries.isAtEnd())
    {
        _name = _entries.name();
        const mode_t type = _entries.type();
        _entries.advance();
        const Kind kind = examine(type);
        if (kind == Kind::None)
        {
            continue;
        }
        _lastIsFile = kind == Kind::File;
        if (_lastIsFile == _iterateFiles && !isDeleted())
        {
            return true;
        }
    }
    return false;
}

FileGroupIterator::Kind FileGroupIterator::examine(mode_t type)
{
    const bool isToldByDirectory = _span == Span::OneCall && _isSearchable && type != 0 && type != S_IFLNK &&
                                   _directory.size() + _name.size() < PATH_MAX;
    if (!isToldByDirectory)
    {
        const std::string text = _directory + _name;
        const bool isALink = isLink(text, type);
        if (isALink || type == 0)
        {
            return examineByTarget(text, isALink);
        }
        _isSearchable = true;
    }
    _lastMayBeLink = false;
    switch (type)
    {
    case S_IFREG:
        return FileManagementConstrainsUtil::isHiddenName(_name) ? Kind::None : Kind::File;
    case S_IFDIR:
        _hasMoreThanFiles = true;
        return Kind::Directory;
    default:
        return Kind::None;
    }
}

FileGroupIterator::Kind FileGroupIterator::examineByTarget(const std::string& text, bool isALink)
{
    _hasMoreThanFiles = true;
    _lastMayBeLink = true;
    if (isALink && !isLinkReferringToDirectory(text))
    {
        return Kind::None;
    }
    const Poco::File file(text);
    if (file.isFile() && !FileManagementConstrainsUtil::isHiddenName(_name))
    {
        return Kind::File;
    }
    mode_t type = 0;
    const bool isDirectory = file.isDirectory() || (isLink(text, type) && isLinkReferringToDirectory(text));
    return isDirectory ? Kind::Directory : Kind::None;
}

bool FileGroupIterator::isDeleted() const
{
    if (_changes._deletedFiles.empty() && _changes._deletedDirs.empty())
    {
        return false;
    }
    const std::string text = textOfLast();
    return _changes._deletedFiles.containsText(text) || _changes._deletedDirs.containsText(text);
}

bool FileGroupIterator::getNextFromCreatedDirs(Poco::Path& entry)
{
    if (_pendingDirs.empty() || _iterateFiles)
    {
        return false;
    }
    entry = _pendingDirs.takeFirst();
    return true;
}

void FileGroupIterator::clear()
{
    _entries.close();
    _pendingDirs.clear();
    _directory.clear();
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
