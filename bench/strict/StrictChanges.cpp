#include "strict/StrictChanges.h"

#include "ways/Require.h"

#include <filesystem>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace zolbench
{

namespace
{

constexpr mode_t directoryMode = 0770;
constexpr mode_t directoryModeBelowSetgid = 02770;
constexpr mode_t ancestorMode = 0777;

std::string_view parentOf(std::string_view directory)
{
    return directory.substr(0, directory.rfind('/', directory.size() - 2) + 1);
}

void makeDirectory(const std::string& path)
{
    if (::mkdir(path.c_str(), ancestorMode) == 0 || errno == EEXIST)
    {
        return;
    }
    std::filesystem::create_directories(path.substr(0, path.size() - 1));
}

bool hasSetgid(const std::string& directory)
{
    struct stat status
    {};
    return ::stat(directory.c_str(), &status) == 0 && (status.st_mode & S_ISGID) != 0;
}

void createAll(const std::set<std::string>& directories)
{
    std::string parent;
    bool isBelowSetgid = false;
    for (const std::string& path : directories)
    {
        makeDirectory(path);
        // one look at each parent, which comes before its children and has its mode by then
        if (parentOf(path) != parent)
        {
            parent = parentOf(path);
            isBelowSetgid = hasSetgid(parent);
        }
        require(::chmod(path.c_str(), isBelowSetgid ? directoryModeBelowSetgid : directoryMode) == 0,
                "chmod");
    }
}

} // namespace

void StrictChanges::addCreatedDir(std::string path)
{
    if (deletedDirs.empty() || deletedDirs.erase(path) == 0)
    {
        createdDirs.insert(std::move(path));
    }
}

void StrictChanges::commit()
{
    for (const std::string& path : deletedFiles)
    {
        if (::unlink(path.c_str()) != 0 && errno == EISDIR)
        {
            std::filesystem::remove_all(path);
        }
    }
    createAll(createdDirs);
    for (const std::string& path : deletedDirs)
    {
        if (::rmdir(path.c_str()) != 0 && errno == ENOTEMPTY)
        {
            std::filesystem::remove_all(path);
        }
    }
    *this = {};
}

} // namespace zolbench
