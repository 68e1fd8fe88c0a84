#include "literal/LiteralWalk.h"

#include "strict/StrictNames.h"

#include <Poco/File.h>
#include <array>
#include <sys/stat.h>
#include <unistd.h>

namespace zolbench
{

namespace
{

bool leadsToDirectory(const std::string& link)
{
    std::array<char, 4096> target{};
    if (::readlink(link.c_str(), target.data(), target.size() - 1) < 0)
    {
        return false;
    }
    const Poco::File file(target.data());
    return file.exists() && file.isDirectory();
}

} // namespace

bool isLiteralLink(const Poco::Path& path)
{
    struct stat status
    {};
    const std::string text = Poco::Path(path).makeFile().toString();
    return ::lstat(text.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

LiteralWalk::LiteralWalk(const Poco::Path& directory, const LiteralChanges& changes, bool ofFiles)
    : _ofFiles(ofFiles)
    , _directory(directory)
    , _changes(changes)
{
    if (!ofFiles)
    {
        _pending = changes.createdDirs;
    }
    if (Poco::File(directory).exists())
    {
        _position = Poco::DirectoryIterator(directory);
    }
}

bool LiteralWalk::next(Poco::Path& entry)
{
    return nextOnDisk(entry) || nextCreated(entry);
}

bool LiteralWalk::nextOnDisk(Poco::Path& entry)
{
    const Poco::DirectoryIterator end;
    while (_position != end)
    {
        const Poco::File file = *_position;
        ++_position;
        Poco::Path path(file.path());
        if (isLiteralLink(path) && !leadsToDirectory(path.toString()))
        {
            continue;
        }
        bool wanted = false;
        if (file.isFile() && !isMarker(path.getFileName()))
        {
            wanted = _ofFiles;
        }
        else if (file.isDirectory())
        {
            path.makeDirectory();
            wanted = !_ofFiles;
        }
        if (wanted && _changes.deletedFiles.count(path) == 0 && _changes.deletedDirs.count(path) == 0)
        {
            entry = path;
            return true;
        }
    }
    return false;
}

bool LiteralWalk::nextCreated(Poco::Path& entry)
{
    while (!_pending.empty())
    {
        const Poco::Path candidate = *_pending.begin();
        _pending.erase(_pending.begin());
        if (candidate.parent().toString() == _directory.toString())
        {
            entry = candidate;
            return true;
        }
    }
    return false;
}

bool hasLiteralFiles(const Poco::Path& directory, const LiteralChanges& changes)
{
    Poco::Path entry;
    if (LiteralWalk(directory, changes, true).next(entry))
    {
        return true;
    }
    LiteralWalk directories(directory, changes, false);
    while (directories.next(entry))
    {
        if (hasLiteralFiles(entry, changes))
        {
            return true;
        }
    }
    return false;
}

} // namespace zolbench
