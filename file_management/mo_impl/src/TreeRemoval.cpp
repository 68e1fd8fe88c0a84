#include "TreeRemoval.h"

#include "Handle.h"

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace ZolFileManagement
{

namespace
{

// What a directory remains under all its names.
using Identity = std::pair<dev_t, ino_t>;

bool identify(const Handle& directory, Identity& identity)
{
    struct stat status
    {};
    if (::fstat(directory.number(), &status) != 0)
    {
        return false;
    }
    identity = {status.st_dev, status.st_ino};
    return true;
}

bool readNames(const Handle& directory, std::vector<std::string>& names)
{
    const int copy = ::fcntl(directory.number(), F_DUPFD_CLOEXEC, 0);
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(::fdopendir(copy), ::closedir);
    if (stream == nullptr)
    {
        ::close(copy);
        return false;
    }
    while (const dirent* entry = ::readdir(stream.get()))
    {
        const std::string_view name = static_cast<const char*>(entry->d_name);
        if (name != "." && name != "..")
        {
            names.emplace_back(name);
        }
    }
    return true;
}

/// Goes through a tree with a handle on one directory at a time. The way down is by name and never through a
/// link, the way up by `..`, which must lead to where the way down came from.
class TreeRemoval
{
public:
    explicit TreeRemoval(const std::string& parent)
        : _directory(::open(parent.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC))
    {}

    bool remove(const std::string& name)
    {
        Level top;
        if (!identify(_directory, top.directory))
        {
            return false;
        }
        top.names = {name};
        _levels.push_back(std::move(top));
        while (!_levels.front().names.empty())
        {
            if (!(_levels.back().names.empty() ? leave() : removeNext()))
            {
                return false;
            }
        }
        return true;
    }

private:
    struct Level
    {
        Identity directory;
        std::vector<std::string> names; // what remains in it, the next one at the end
    };

    const char* next() const { return _levels.back().names.back().c_str(); }

    bool removeNext()
    {
        struct stat status
        {};
        if (::fstatat(_directory.number(), next(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        {
            return false;
        }
        return S_ISDIR(status.st_mode) ? enter() : unlink(0);
    }

    bool enter()
    {
        Handle child(::openat(_directory.number(), next(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
        Level level;
        if (!identify(child, level.directory) || !readNames(child, level.names))
        {
            return false;
        }
        if (level.names.empty()) // also where `..` may not be looked up in it
        {
            return unlink(AT_REMOVEDIR);
        }
        std::reverse(level.names.begin(), level.names.end());
        _levels.push_back(std::move(level));
        _directory = std::move(child);
        return true;
    }

    bool leave()
    {
        Handle parent(::openat(_directory.number(), "..", O_PATH | O_DIRECTORY | O_CLOEXEC));
        Identity identity;
        _levels.pop_back();
        if (!identify(parent, identity) || identity != _levels.back().directory)
        {
            return false;
        }
        _directory = std::move(parent);
        return unlink(AT_REMOVEDIR);
    }

    bool unlink(int flags)
    {
        if (::unlinkat(_directory.number(), next(), flags) != 0)
        {
            return false;
        }
        _levels.back().names.pop_back();
        return true;
    }

    Handle _directory;          // on the directory of the last level
    std::vector<Level> _levels; // from the directory that holds the tree down
};

} // namespace

bool removeTree(const std::string& path)
{
    // what is named like a file mostly is one, and goes in one step
    if (!path.ends_with('/') && ::unlink(path.c_str()) == 0)
    {
        return true;
    }
    const std::string text = path.size() > 1 && path.ends_with('/') ? path.substr(0, path.size() - 1) : path;
    const std::size_t slash = text.rfind('/');
    if (slash == std::string::npos)
    {
        return TreeRemoval(".").remove(text);
    }
    const std::string name = text.substr(slash + 1);
    return TreeRemoval(text.substr(0, slash + 1)).remove(name.empty() ? "." : name);
}

} // namespace ZolFileManagement
