#include "SystemFaults.h"

#include <Poco/File.h>
#include <cerrno>
#include <sys/stat.h>

namespace zoltest
{

namespace
{

SystemFaults* live = nullptr;

template<class Call, class... Args>
bool fails(Call SystemFaults::*call, Args... args)
{
    if (live == nullptr || !(live->*call))
    {
        return false;
    }
    const int error = (live->*call)(args...);
    if (error != 0)
    {
        errno = error;
    }
    return error != 0;
}

} // namespace

SystemFaults::SystemFaults()
{
    live = this;
}

SystemFaults::~SystemFaults()
{
    live = nullptr;
}

} // namespace zoltest

using zoltest::fails;
using zoltest::live;
using zoltest::SystemFaults;

// The linker sends this program's calls of the functions of these names here.
extern "C" {

int __real_mkdirat(int directory, const char* path, mode_t mode);
int __wrap_mkdirat(int directory, const char* path, mode_t mode)
{
    if (live != nullptr && live->createDirectory)
    {
        errno = EIO; // nothing can be thrown through it
        return -1;
    }
    return __real_mkdirat(directory, path, mode);
}

int __real_fchmodat(int directory, const char* path, mode_t mode, int flags);
int __wrap_fchmodat(int directory, const char* path, mode_t mode, int flags)
{
    return fails(&SystemFaults::chmod, path, mode) ? -1 : __real_fchmodat(directory, path, mode, flags);
}

int __real_chown(const char* path, uid_t owner, gid_t group);
int __wrap_chown(const char* path, uid_t owner, gid_t group)
{
    return fails(&SystemFaults::chown, path, owner, group) ? -1 : __real_chown(path, owner, group);
}

// what `fstatat` is called where files may be large
int __real_fstatat64(int directory, const char* path, struct stat* status, int flags);
int __wrap_fstatat64(int directory, const char* path, struct stat* status, int flags)
{
    return fails(&SystemFaults::stat, path) ? -1 : __real_fstatat64(directory, path, status, flags);
}

void __real_free(void* memory);
void __wrap_free(void* memory)
{
    if (live != nullptr && live->free)
    {
        live->free(memory);
    }
    __real_free(memory);
}

// Poco::File::createDirectory()
bool __real__ZN4Poco4File15createDirectoryEv(Poco::File* file);
bool __wrap__ZN4Poco4File15createDirectoryEv(Poco::File* file)
{
    if (live != nullptr && live->createDirectory)
    {
        live->createDirectory(file->path());
    }
    return __real__ZN4Poco4File15createDirectoryEv(file);
}
}

// ZolFileManagement::removeTree(const std::string&)
bool realRemoveTree(const std::string& path) __asm__(
    "__real__ZN17ZolFileManagement10removeTreeERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE");
bool wrappedRemoveTree(const std::string& path) __asm__(
    "__wrap__ZN17ZolFileManagement10removeTreeERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE");
bool wrappedRemoveTree(const std::string& path)
{
    if (live != nullptr && live->remove)
    {
        live->remove(path.ends_with('/') ? path.substr(0, path.size() - 1) : path);
    }
    return realRemoveTree(path);
}
