#include "literal/LiteralChanges.h"

#include <Poco/Exception.h>
#include <Poco/File.h>
#include <cstdlib>
#include <cstring>
#include <libgen.h>
#include <memory>
#include <sys/stat.h>

namespace zolbench
{

namespace
{

constexpr mode_t directoryMode = 0770;
constexpr mode_t directoryModeBelowSetgid = 02770;

void removeAll(const LiteralPaths& paths)
{
    for (const Poco::Path& path : paths)
    {
        try
        {
            Poco::File(path).remove(true);
        }
        catch (const Poco::Exception&)
        {
            continue;
        }
    }
}

void create(const Poco::Path& path)
{
    Poco::File(path).createDirectories();
    const std::string text = path.toString();
    const std::unique_ptr<char, decltype(&::free)> copy(::strdup(text.c_str()), ::free);
    struct stat parent
    {};
    const bool isBelowSetgid = ::stat(::dirname(copy.get()), &parent) == 0 && (parent.st_mode & S_ISGID) != 0;
    if (::chmod(text.c_str(), isBelowSetgid ? directoryModeBelowSetgid : directoryMode) != 0)
    {
        throw Poco::SystemException(text);
    }
}

} // namespace

void LiteralChanges::addCreatedDir(const Poco::Path& path)
{
    if (deletedDirs.erase(path) == 0)
    {
        createdDirs.insert(path);
    }
}

void LiteralChanges::commit()
{
    removeAll(deletedFiles);
    for (const Poco::Path& path : createdDirs)
    {
        create(path);
    }
    removeAll(deletedDirs);
    *this = {};
}

} // namespace zolbench
