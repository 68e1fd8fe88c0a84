#include "FileMTransaction.h"
#include "LogForms.h"
#include "TextCopy.h"
#include "TreeRemoval.h"

#include <Poco/Exception.h>
#include <Poco/File.h>
#include <cerrno>
#include <cstring>
#include <libgen.h>
#include <sys/stat.h>
#include <unistd.h>

namespace ZolFileManagement
{

namespace
{

constexpr mode_t newDirectoryMode = 0770;
constexpr mode_t newDirectoryModeBelowSetgid = 02770;
constexpr mode_t setgidBit = 02000;

// What can't be removed stays, and what has vanished is no failure: the rest is to go all the same.
void removeAll(const NonComittedData::Paths& paths)
{
    for (const Poco::Path& path : paths)
    {
        const std::string item = path.toString();
        try
        {
            removeTree(item);
        }
        catch (...)
        {
            continue;
        }
    }
}

mode_t modeOfNewDirectory(const std::string& directory)
{
    // dirname may write into its argument
    const Zol::TextCopy copy = Zol::copyText(directory.c_str());
    struct stat parent
    {};
    const bool isBelowSetgid =
        ::stat(::dirname(copy.get()), &parent) == 0 && (parent.st_mode & setgidBit) != 0;
    return isBelowSetgid ? newDirectoryModeBelowSetgid : newDirectoryMode;
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

void createDirectory(const Poco::Path& path)
{
    createWithAncestors(path);
    const std::string directory = path.toString();
    if (::chmod(directory.c_str(), modeOfNewDirectory(directory)) != 0)
    {
        ZOL_SEVERITY_LOG(4, "Unable to modify the permissions of %s", directory.c_str());
    }
}

} // namespace

ZolReturnT FileMTransaction::commit() noexcept
{
    ZOL_ENTER_TRACE(" >> ");
    ZolReturnT result = 0;
    try
    {
        removeAll(_nonComittedData._deletedFiles);
        // a parent comes before its children, which then see the mode that it has just been given
        for (const Poco::Path& path : _nonComittedData._createdDirs)
        {
            createDirectory(path);
        }
        removeAll(_nonComittedData._deletedDirs);
    }
    catch (const std::exception& failure)
    {
        ZOL_PLAIN_TRACE("FileMTransaction::commit, unexpected exception : %s", failure.what());
        result = -1;
    }
    _nonComittedData.reset();
    ZOL_EXIT_TRACE(" << ");
    return result;
}

ZolReturnT FileMTransaction::abort() noexcept
{
    ZOL_ENTER_TRACE(" >> ");
    _nonComittedData.reset();
    _fileGroupIterators.clear();
    ZOL_EXIT_TRACE(" << ");
    return 0;
}

void FileMTransaction::modifyFileOwnerAndGroup(const char* path, unsigned int owner, unsigned int group)
{
    if (::chown(path, owner, group) != 0)
    {
        const int error = errno;
        ZOL_SEVERITY_LOG(3, "Error occurred while changing the group of directory %s, error %s", path,
                         std::strerror(error));
    }
}

} // namespace ZolFileManagement
