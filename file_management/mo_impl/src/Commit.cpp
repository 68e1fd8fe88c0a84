#include "FileMTransaction.h"
#include "LogForms.h"
#include "NewDirectories.h"
#include "TreeRemoval.h"

#include <cerrno>
#include <cstring>
#include <unistd.h>

namespace ZolFileManagement
{

namespace
{

// What can't be removed stays, and what has vanished is no failure: the rest is to go all the same.
void removeAll(const NonComittedData::Paths& paths)
{
    for (const std::string& item : paths.texts())
    {
        try
        {
            removeTree(item);
        }
        catch (...)
        {
            // it stays, and the others go
        }
    }
}

void makeAll(const NonComittedData::Paths& paths)
{
    // a parent comes before its children, which then see the mode that it has just been given
    NewDirectories directories;
    for (const std::string& directory : paths.texts())
    {
        directories.make(directory);
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
        makeAll(_nonComittedData._createdDirs);
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
