#include "ShimState.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <regex.h>
#include <sys/stat.h>
#include <unistd.h>

namespace faultshim
{

namespace
{

template<class Signature>
Signature* next(const char* name)
{
    return reinterpret_cast<Signature*>(dlsym(RTLD_NEXT, name));
}

template<class Result, class Real>
Result through(Verdict verdict, Result failure, Real real)
{
    if (verdict == Verdict::Fail)
    {
        return failure;
    }
    const Result result = real();
    if (verdict == Verdict::KillAfterwards)
    {
        killNow();
    }
    return result;
}

// The resource is gone also where giving it back fails.
template<class Result, class Real>
Result throughAnyway(Verdict verdict, Result failure, Real real)
{
    const int error = errno;
    const Result result = through(verdict == Verdict::Fail ? Verdict::Pass : verdict, failure, real);
    if (verdict == Verdict::Fail)
    {
        errno = error;
        return failure;
    }
    return result;
}

} // namespace

} // namespace faultshim

using faultshim::Function;
using faultshim::judge;
using faultshim::next;
using faultshim::through;
using faultshim::throughAnyway;
using faultshim::Verdict;

#define SHIM_PLACE __builtin_extract_return_addr(__builtin_return_address(0))

/// A function of one line: its type, name and whether it may throw, its parameters and arguments, how it is
/// counted, what of its arguments tells the path, and what it returns when it fails.
#define SHIM(RESULT, NAME, NOEXCEPT, PARAMETERS, ARGUMENTS, FUNCTION, WHERE, FAILURE)                        \
    extern "C" RESULT NAME PARAMETERS NOEXCEPT                                                               \
    {                                                                                                        \
        static auto* const real = next<RESULT PARAMETERS>(#NAME);                                            \
        return through<RESULT>(judge(Function::FUNCTION, WHERE, SHIM_PLACE), FAILURE,                        \
                               [&] { return real ARGUMENTS; });                                              \
    }
#define SHIM_TWO(...) __VA_ARGS__
#define SHIM_ALONE(RESULT, NAME, PARAMETERS, ARGUMENTS, FUNCTION)                                            \
    extern "C" RESULT NAME PARAMETERS                                                                        \
    {                                                                                                        \
        static auto* const real = next<RESULT PARAMETERS>(#NAME);                                            \
        const Verdict verdict = judge(Function::FUNCTION, text, SHIM_PLACE);                                 \
        const faultshim::Suspended alone;                                                                    \
        return through<RESULT>(verdict, REG_ESPACE, [&] { return real ARGUMENTS; });                         \
    }

SHIM(int, stat, noexcept, (const char* path, struct stat* status), (path, status), Stat, path, -1)
SHIM(int, stat64, noexcept, (const char* path, struct stat64* status), (path, status), Stat, path, -1)
SHIM(int, lstat, noexcept, (const char* path, struct stat* status), (path, status), Lstat, path, -1)
SHIM(int, lstat64, noexcept, (const char* path, struct stat64* status), (path, status), Lstat, path, -1)
SHIM(int, fstat, noexcept, (int file, struct stat* status), (file, status), Fstat, SHIM_TWO(file, nullptr),
     -1)
SHIM(int, fstat64, noexcept, (int file, struct stat64* status), (file, status), Fstat,
     SHIM_TWO(file, nullptr), -1)
SHIM(int, fstatat, noexcept, (int directory, const char* name, struct stat* status, int flags),
     (directory, name, status, flags), Fstatat, SHIM_TWO(directory, name), -1)
SHIM(int, fstatat64, noexcept, (int directory, const char* name, struct stat64* status, int flags),
     (directory, name, status, flags), Fstatat, SHIM_TWO(directory, name), -1)
SHIM(int, access, noexcept, (const char* path, int mode), (path, mode), Access, path, -1)
SHIM(int, mkdir, noexcept, (const char* path, mode_t mode), (path, mode), Mkdir, path, -1)
SHIM(int, mkdirat, noexcept, (int directory, const char* name, mode_t mode), (directory, name, mode), Mkdir,
     SHIM_TWO(directory, name), -1)
SHIM(int, chmod, noexcept, (const char* path, mode_t mode), (path, mode), Chmod, path, -1)
SHIM(int, fchmodat, noexcept, (int directory, const char* name, mode_t mode, int flags),
     (directory, name, mode, flags), Chmod, SHIM_TWO(directory, name), -1)
SHIM(int, unlink, noexcept, (const char* path), (path), Unlink, path, -1)
SHIM(int, unlinkat, noexcept, (int directory, const char* name, int flags), (directory, name, flags),
     Unlinkat, SHIM_TWO(directory, name), -1)
SHIM(int, rmdir, noexcept, (const char* path), (path), Rmdir, path, -1)
SHIM(int, remove, noexcept, (const char* path), (path), Remove, path, -1)
SHIM(DIR*, opendir, , (const char* path), (path), Opendir, path, nullptr)
SHIM(DIR*, fdopendir, , (int file), (file), Fdopendir, SHIM_TWO(file, nullptr), nullptr)
SHIM(ssize_t, readlink, noexcept, (const char* path, char* target, size_t room), (path, target, room),
     Readlink, path, -1)
SHIM(FILE*, fdopen, noexcept, (int file, const char* mode), (file, mode), Fdopen, SHIM_TWO(file, nullptr),
     nullptr)
SHIM(FILE*, popen, , (const char* command, const char* mode), (command, mode), Popen, command, nullptr)
SHIM(char*, fgets, , (char* text, int room, FILE* file), (text, room, file), Fgets, nullptr, nullptr)
// What these allocate isn't failed by itself: the C library then frees some of it twice.
SHIM_ALONE(int, regcomp, (regex_t * pattern, const char* text, int flags), (pattern, text, flags), Regcomp)
SHIM_ALONE(int, regexec,
           (const regex_t* pattern, const char* text, size_t count, regmatch_t matches[], int flags),
           (pattern, text, count, matches, flags), Regexec)
SHIM(pid_t, fork, noexcept, (), (), Fork, nullptr, -1)

namespace
{

template<class Signature>
int openThrough(Signature* real, int directory, const char* name, int flags, std::va_list arguments,
                Function function, const void* place)
{
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    return through(judge(function, directory, name, place), -1,
                   [&] { return real(directory, name, flags, mode); });
}

int openAt(int directory, const char* name, int flags, mode_t mode)
{
    static auto* const real = next<int(int, const char*, int, ...)>("openat");
    return real(directory, name, flags, mode);
}

} // namespace

#define SHIM_OPEN(NAME, PARAMETERS, DIRECTORY, FUNCTION)                                                     \
    extern "C" int NAME PARAMETERS                                                                           \
    {                                                                                                        \
        std::va_list arguments;                                                                              \
        va_start(arguments, flags);                                                                          \
        const int file = openThrough(openAt, DIRECTORY, path, flags, arguments, FUNCTION, SHIM_PLACE);       \
        va_end(arguments);                                                                                   \
        return file;                                                                                         \
    }

SHIM_OPEN(open, (const char* path, int flags, ...), AT_FDCWD, Function::Open)
SHIM_OPEN(open64, (const char* path, int flags, ...), AT_FDCWD, Function::Open)
SHIM_OPEN(openat, (int directory, const char* path, int flags, ...), directory, Function::Openat)
SHIM_OPEN(openat64, (int directory, const char* path, int flags, ...), directory, Function::Openat)

#define SHIM_FCNTL(NAME)                                                                                     \
    extern "C" int NAME(int file, int command, ...)                                                          \
    {                                                                                                        \
        static auto* const real = next<int(int, int, ...)>(#NAME);                                           \
        std::va_list arguments;                                                                              \
        va_start(arguments, command);                                                                        \
        void* const argument = va_arg(arguments, void*);                                                     \
        va_end(arguments);                                                                                   \
        return through(judge(Function::Fcntl, file, nullptr, SHIM_PLACE), -1,                                \
                       [&] { return real(file, command, argument); });                                       \
    }

SHIM_FCNTL(fcntl)
SHIM_FCNTL(fcntl64)

extern "C" int close(int file)
{
    static auto* const real = next<int(int)>("close");
    return throughAnyway(judge(Function::Close, file, nullptr, SHIM_PLACE), -1, [&] { return real(file); });
}

extern "C" int closedir(DIR* directory)
{
    static auto* const real = next<int(DIR*)>("closedir");
    return throughAnyway(judge(Function::Closedir, dirfd(directory), nullptr, SHIM_PLACE), -1,
                         [&] { return real(directory); });
}

extern "C" int pclose(FILE* file)
{
    static auto* const real = next<int(FILE*)>("pclose");
    return throughAnyway(judge(Function::Pclose, nullptr, SHIM_PLACE), -1, [&] { return real(file); });
}

namespace
{

template<class Entry, class Real>
Entry* readNext(DIR* directory, Real real, const void* place)
{
    Entry* const entry = through<Entry*>(judge(Function::Readdir, dirfd(directory), nullptr, place), nullptr,
                                         [&] { return real(directory); });
    if (entry != nullptr)
    {
        faultshim::noteEntry(entry->d_name);
    }
    return entry;
}

} // namespace

extern "C" ssize_t getdents64(int directory, void* buffer, size_t room) noexcept
{
    static auto* const real = next<ssize_t(int, void*, size_t)>("getdents64");
    const ssize_t size = through<ssize_t>(judge(Function::Getdents, directory, nullptr, SHIM_PLACE), -1,
                                          [&] { return real(directory, buffer, room); });
    for (ssize_t at = 0; at < size;)
    {
        const auto* entry = reinterpret_cast<const dirent64*>(static_cast<const char*>(buffer) + at);
        faultshim::noteEntry(entry->d_name);
        at += entry->d_reclen;
    }
    return size;
}

extern "C" struct dirent* readdir(DIR* directory)
{
    static auto* const real = next<struct dirent*(DIR*)>("readdir");
    return readNext<struct dirent>(directory, real, SHIM_PLACE);
}

extern "C" struct dirent64* readdir64(DIR* directory)
{
    static auto* const real = next<struct dirent64*(DIR*)>("readdir64");
    return readNext<struct dirent64>(directory, real, SHIM_PLACE);
}
