#include "model/Sandbox.h"

#include "model/Printable.h"
#include "support/MemoryFolder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace zolmodel
{

namespace
{

namespace fs = std::filesystem;

const mode_t MODE_OF_DIRECTORIES = 0755;

void require(bool done, const std::string& what)
{
    if (!done)
    {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

void makeDirectory(const std::string& path, mode_t mode)
{
    require(mkdir(path.c_str(), mode) == 0 && chmod(path.c_str(), mode) == 0, "mkdir " + path);
}

void makeFile(const std::string& path, int size)
{
    const int descriptor = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0644);
    require(descriptor >= 0 && ftruncate(descriptor, size) == 0, "open " + path);
    close(descriptor);
}

Kind kindOf(mode_t mode)
{
    switch (mode & S_IFMT)
    {
    case S_IFDIR:
        return Kind::Directory;
    case S_IFREG:
        return Kind::File;
    case S_IFLNK:
        return Kind::Link;
    default:
        return Kind::Pipe;
    }
}

std::string targetOf(const std::string& path)
{
    std::array<char, PATH_MAX> target = {};
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    require(length >= 0, "readlink " + path);
    return {target.data(), static_cast<std::size_t>(length)};
}

std::string described(const struct stat& status, const std::string& path)
{
    std::array<char, 32> mode = {};
    snprintf(mode.data(), mode.size(), " mode %o", status.st_mode & 07777U);
    switch (kindOf(status.st_mode))
    {
    case Kind::Directory:
        return std::string("directory") + mode.data();
    case Kind::File:
        return std::string("file") + mode.data() + " size " + std::to_string(status.st_size);
    case Kind::Link:
        return "link to " + printable(targetOf(path));
    case Kind::Pipe:
        return std::string("pipe") + mode.data();
    }
    return "?";
}

std::string described(const Node& node)
{
    std::array<char, 32> mode = {};
    snprintf(mode.data(), mode.size(), " mode %o", node.mode);
    switch (node.kind)
    {
    case Kind::Directory:
        return std::string("directory") + mode.data();
    case Kind::File:
        return std::string("file") + mode.data() + " size " + std::to_string(node.size);
    case Kind::Link:
        return "link to " + printable(node.target);
    case Kind::Pipe:
        return std::string("pipe") + mode.data();
    }
    return "?";
}

std::optional<std::string> differenceBelow(const std::string& path, const Node& directory)
{
    const auto names = Sandbox::namesInDiskOrder(path);
    for (const auto& name : names)
    {
        const std::string entry = path + "/" + name;
        const auto found = directory.children.find(name);
        if (found == directory.children.end())
        {
            return printable(entry) + " is there, expected nothing";
        }
        struct stat status = {};
        require(lstat(entry.c_str(), &status) == 0, "lstat " + entry);
        const std::string expected = described(*found->second);
        const std::string actual = described(status, entry);
        if (expected != actual)
        {
            return printable(entry) + " is " + actual + ", expected " + expected;
        }
        if (found->second->kind == Kind::Directory)
        {
            if (auto below = differenceBelow(entry, *found->second))
            {
                return below;
            }
        }
    }
    for (const auto& child : directory.children)
    {
        if (std::find(names.begin(), names.end(), child.first) == names.end())
        {
            return printable(path + "/" + child.first) + " is not there, expected " +
                   described(*child.second);
        }
    }
    return std::nullopt;
}

void putAs(const struct stat& status, const std::string& path, Disk& disk)
{
    switch (kindOf(status.st_mode))
    {
    case Kind::Directory:
        disk.putDirectory(path, status.st_mode);
        break;
    case Kind::File:
        disk.putFile(path, static_cast<std::uint64_t>(status.st_size));
        break;
    case Kind::Link:
        disk.putLink(path, targetOf(path));
        break;
    case Kind::Pipe:
        disk.putPipe(path);
        break;
    }
}

void adoptBelow(const std::string& path, Disk& disk)
{
    const auto names = Sandbox::namesInDiskOrder(path);
    std::vector<std::string> gone;
    for (const auto& child : disk.unfollowed(path)->children)
    {
        if (std::find(names.begin(), names.end(), child.first) == names.end())
        {
            gone.push_back(child.first);
        }
    }
    for (const auto& name : gone)
    {
        disk.remove(path + "/" + name);
    }
    for (const auto& name : names)
    {
        const std::string entry = path + "/" + name;
        struct stat status = {};
        require(lstat(entry.c_str(), &status) == 0, "lstat " + entry);
        if (disk.unfollowed(entry) == nullptr)
        {
            putAs(status, entry, disk);
        }
        if (kindOf(status.st_mode) == Kind::Directory)
        {
            disk.changeMode(entry, status.st_mode & 07777U);
            adoptBelow(entry, disk);
        }
    }
}

} // namespace

Sandbox::Sandbox()
    : _path(zoltest::memoryFolder() + "/zol-model-XXXXXX")
{
    require(mkdtemp(_path.data()) != nullptr, "mkdtemp " + _path);
    for (const std::string& directory : {_path + "/r", internalRoot(), outside(), workingDirectory()})
    {
        makeDirectory(directory, MODE_OF_DIRECTORIES);
    }
    require(chdir(workingDirectory().c_str()) == 0, "chdir");
}

Sandbox::~Sandbox()
{
    std::error_code ignored;
    fs::remove_all(_path, ignored);
    fs::remove(report(), ignored);
}

// The working directory is emptied only: relative texts go on to start in it.
void Sandbox::empty(World& world) const
{
    for (const std::string& directory : {_path + "/r", outside()})
    {
        fs::remove_all(directory);
        makeDirectory(directory, MODE_OF_DIRECTORIES);
        world.disk.putDirectory(directory, MODE_OF_DIRECTORIES);
    }
    makeDirectory(internalRoot(), MODE_OF_DIRECTORIES);
    world.disk.putDirectory(internalRoot(), MODE_OF_DIRECTORIES);
    for (const auto& name : namesInDiskOrder(workingDirectory()))
    {
        fs::remove_all(workingDirectory() + "/" + name);
    }
    require(chmod(workingDirectory().c_str(), MODE_OF_DIRECTORIES) == 0, "chmod");
    world.disk.putDirectory(workingDirectory(), MODE_OF_DIRECTORIES);
    world.disk.setWorkingDirectory(workingDirectory());
    world.changeable = _path + "/r";
}

void Sandbox::change(const Operation& operation) const
{
    const char* path = operation.name.c_str();
    const auto mode = static_cast<mode_t>(operation.number);
    switch (operation.does)
    {
    case Does::PutFile:
        makeFile(path, operation.number);
        break;
    case Does::PutDirectory:
        makeDirectory(path, mode);
        break;
    case Does::PutLink:
        require(symlink(operation.text.c_str(), path) == 0, operation.name);
        break;
    case Does::PutPipe:
        require(mkfifo(path, 0644) == 0, operation.name);
        break;
    case Does::RemoveEntry:
        fs::remove_all(path);
        break;
    case Does::ChangeMode:
        require(chmod(path, mode) == 0, operation.name);
        break;
    default:
        throw std::logic_error("not an operation of others");
    }
}

std::optional<std::string> Sandbox::difference(const Disk& disk) const
{
    return differenceBelow(_path, *disk.followed(_path));
}

void Sandbox::adopt(Disk& disk) const
{
    adoptBelow(_path, disk);
}

std::vector<std::string> Sandbox::namesInDiskOrder(const std::string& directory)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(directory.c_str()), closedir);
    require(stream != nullptr, "opendir " + directory);
    std::vector<std::string> names;
    while (const dirent* entry = readdir(stream.get()))
    {
        const std::string name = static_cast<const char*>(entry->d_name);
        if (name != "." && name != "..")
        {
            names.push_back(name);
        }
    }
    return names;
}

Surroundings::Status Sandbox::status(const std::string& text)
{
    struct stat status = {};
    require(stat(text.c_str(), &status) == 0, "stat " + text);
    return {status.st_ctime, static_cast<std::uint64_t>(status.st_size)};
}

} // namespace zolmodel
