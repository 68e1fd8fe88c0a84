#include "races/SystemCalls.h"

#include <cstdarg>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zoltest
{

namespace
{

SystemCalls::Function seen;

void show(const char* name, const char* path)
{
    if (seen)
    {
        const SystemCalls::Function function = std::exchange(seen, nullptr);
        function({name, path});
        seen = function;
    }
}

template<class Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

SystemCalls::SystemCalls(Function before)
{
    seen = std::move(before);
}

SystemCalls::~SystemCalls()
{
    seen = nullptr;
}

} // namespace zoltest

using zoltest::modeOf;
using zoltest::next;
using zoltest::show;

// A program's functions come before those of the libraries that it uses, for their calls as well as its own.
extern "C" {

int stat64(const char* path, struct stat64* status) noexcept
{
    show("stat", path);
    static auto* const real = next<int(const char*, struct stat64*)>("stat64");
    return real(path, status);
}

int lstat64(const char* path, struct stat64* status) noexcept
{
    show("lstat", path);
    static auto* const real = next<int(const char*, struct stat64*)>("lstat64");
    return real(path, status);
}

int fstat64(int handle, struct stat64* status) noexcept
{
    show("fstat", "");
    static auto* const real = next<int(int, struct stat64*)>("fstat64");
    return real(handle, status);
}

int fstatat64(int directory, const char* name, struct stat64* status, int flags) noexcept
{
    show("fstatat", name);
    static auto* const real = next<int(int, const char*, struct stat64*, int)>("fstatat64");
    return real(directory, name, status, flags);
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    show("open", path);
    static auto* const real = next<int(const char*, int, mode_t)>("open64");
    return real(path, flags, mode);
}

int openat64(int directory, const char* name, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    show("openat", name);
    static auto* const real = next<int(int, const char*, int, mode_t)>("openat64");
    return real(directory, name, flags, mode);
}

DIR* opendir(const char* path)
{
    show("opendir", path);
    static auto* const real = next<DIR*(const char*)>("opendir");
    return real(path);
}

DIR* fdopendir(int handle)
{
    show("fdopendir", "");
    static auto* const real = next<DIR*(int)>("fdopendir");
    return real(handle);
}

ssize_t getdents64(int handle, void* buffer, size_t room) noexcept
{
    show("getdents", "");
    static auto* const real = next<ssize_t(int, void*, size_t)>("getdents64");
    return real(handle, buffer, room);
}

struct dirent64* readdir64(DIR* stream)
{
    show("readdir", "");
    static auto* const real = next<struct dirent64*(DIR*)>("readdir64");
    return real(stream);
}

ssize_t readlink(const char* path, char* target, size_t room) noexcept
{
    show("readlink", path);
    static auto* const real = next<ssize_t(const char*, char*, size_t)>("readlink");
    return real(path, target, room);
}

int unlinkat(int directory, const char* name, int flags) noexcept
{
    show((flags & AT_REMOVEDIR) != 0 ? "rmdir" : "unlink", name);
    static auto* const real = next<int(int, const char*, int)>("unlinkat");
    return real(directory, name, flags);
}

int unlink(const char* path) noexcept
{
    show("unlink", path);
    static auto* const real = next<int(const char*)>("unlink");
    return real(path);
}

int rmdir(const char* path) noexcept
{
    show("rmdir", path);
    static auto* const real = next<int(const char*)>("rmdir");
    return real(path);
}

int mkdir(const char* path, mode_t mode) noexcept
{
    show("mkdir", path);
    static auto* const real = next<int(const char*, mode_t)>("mkdir");
    return real(path, mode);
}

int mkdirat(int directory, const char* name, mode_t mode) noexcept
{
    show("mkdir", name);
    static auto* const real = next<int(int, const char*, mode_t)>("mkdirat");
    return real(directory, name, mode);
}

int fchmodat(int directory, const char* name, mode_t mode, int flags) noexcept
{
    show("chmod", name);
    static auto* const real = next<int(int, const char*, mode_t, int)>("fchmodat");
    return real(directory, name, mode, flags);
}

int chmod(const char* path, mode_t mode) noexcept
{
    show("chmod", path);
    static auto* const real = next<int(const char*, mode_t)>("chmod");
    return real(path, mode);
}
}
