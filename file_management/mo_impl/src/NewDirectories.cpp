#include "NewDirectories.h"

#include "LiteralPath.h"
#include "LogForms.h"

#include <Poco/Exception.h>
#include <Poco/File.h>
#include <algorithm>
#include <climits>
#include <string_view>
#include <sys/stat.h>

namespace ZolFileManagement
{

namespace
{

constexpr mode_t whatTheMaskLeaves = 0777;
constexpr mode_t newDirectoryMode = 0770;
constexpr mode_t newDirectoryModeBelowSetgid = 02770;
constexpr mode_t setgidBit = 02000;

constexpr std::ptrdiff_t levelsInOneCall = 16; // a way that is longer takes longer than another handle

/// With the slash behind it, and empty in the working directory.
std::string_view parentOf(std::string_view directory)
{
    return directory.substr(0, directory.rfind('/', directory.size() - 2) + 1);
}

std::ptrdiff_t levelsBelow(const std::string& base, const std::string& directory)
{
    return std::count(directory.begin() + static_cast<std::ptrdiff_t>(base.size()), directory.end(), '/');
}

// Poco::File::createDirectories would read the texts of the ancestors anew, with `a:` as a device.
void createWithAncestors(const Poco::Path& directory)
{
    Poco::File file(directory);
    if (file.exists())
    {
        return;
    }
    if (directory.depth() > 1)
    {
        createWithAncestors(directory.parent());
    }
    try
    {
        file.createDirectory();
    }
    catch (const Poco::FileExistsException&)
    {
        // also a link to nothing
    }
}

} // namespace

void NewDirectories::make(const std::string& directory)
{
    approach(directory);
    const char* fromBase = directory.c_str() + _base.size();
    if (::mkdirat(_handle.number(), fromBase, whatTheMaskLeaves) != 0)
    {
        makePlainly(directory);
        return;
    }
    setMode(fromBase, directory);
    _made = directory;
}

void NewDirectories::makePlainly(const std::string& directory)
{
    leaveBase();
    createWithAncestors(literalPath(directory));
    setMode(directory.c_str(), directory);
    _parent.clear(); // which it may be by another name, and the system doesn't let everyone set the bit
}

void NewDirectories::setMode(const char* fromBase, const std::string& directory)
{
    const mode_t mode = isBelowSetgid(fromBase, directory) ? newDirectoryModeBelowSetgid : newDirectoryMode;
    if (::fchmodat(_handle.number(), fromBase, mode, 0) != 0)
    {
        ZOL_SEVERITY_LOG(4, "Unable to modify the permissions of %s", directory.c_str());
    }
}

bool NewDirectories::isBelowSetgid(const char* fromBase, const std::string& directory)
{
    const std::string_view parent = parentOf(directory);
    if (parent != _parent || _parent.empty())
    {
        const std::string text(parentOf(fromBase));
        struct stat status
        {};
        if (::fstatat(_handle.number(), text.empty() ? "." : text.c_str(), &status, 0) != 0)
        {
            return false;
        }
        _parent = parent;
        _isParentSetgid = (status.st_mode & setgidBit) != 0;
    }
    return _isParentSetgid;
}

void NewDirectories::approach(const std::string& directory)
{
    // no handle makes a path shorter that is too long for the system
    if (!directory.starts_with(_base) || directory.size() >= PATH_MAX)
    {
        leaveBase();
    }
    else if (parentOf(directory) == _made && levelsBelow(_base, _made) > levelsInOneCall)
    {
        Handle made(
            ::openat(_handle.number(), _made.c_str() + _base.size(), O_PATH | O_DIRECTORY | O_CLOEXEC));
        if (made.isOpen())
        {
            _handle = std::move(made);
            _base = _made;
        }
    }
}

void NewDirectories::leaveBase()
{
    _handle = Handle(AT_FDCWD);
    _base.clear();
}

} // namespace ZolFileManagement
