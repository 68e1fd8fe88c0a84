#include "Faults.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>
#include <unistd.h>

namespace zoltest
{

namespace
{

Faults* liveFaults = nullptr;

bool fails(Faults::Call Faults::*call, const char* path)
{
    if (liveFaults == nullptr || !(liveFaults->*call))
    {
        return false;
    }
    const int error = (liveFaults->*call)(path);
    if (error != 0)
    {
        errno = error;
    }
    return error != 0;
}

} // namespace

Faults::Faults()
{
    liveFaults = this;
}

Faults::~Faults()
{
    liveFaults = nullptr;
}

} // namespace zoltest

using zoltest::fails;
using zoltest::Faults;
using zoltest::liveFaults;

// The linker sends the calls of this program here instead of to the functions of these names.
extern "C" {

int __real_lstat64(const char* path, struct stat* status);
int __wrap_lstat64(const char* path, struct stat* status)
{
    return fails(&Faults::lstat, path) ? -1 : __real_lstat64(path, status);
}

int __real_stat64(const char* path, struct stat* status);
int __wrap_stat64(const char* path, struct stat* status)
{
    if (fails(&Faults::stat, path))
    {
        return -1;
    }
    const int result = __real_stat64(path, status);
    if (result == 0 && liveFaults != nullptr && liveFaults->statAnswer)
    {
        liveFaults->statAnswer(*status);
    }
    return result;
}

ssize_t __real_readlink(const char* path, char* target, size_t room);
ssize_t __wrap_readlink(const char* path, char* target, size_t room)
{
    if (fails(&Faults::readlink, path))
    {
        return -1;
    }
    if (liveFaults == nullptr)
    {
        return __real_readlink(path, target, room);
    }
    liveFaults->roomForLinkTarget = room;
    if (!liveFaults->linkTarget)
    {
        return __real_readlink(path, target, room);
    }
    return static_cast<ssize_t>(liveFaults->linkTarget->copy(target, room));
}

ssize_t __real_getdents64(int directory, void* buffer, size_t room);
ssize_t __wrap_getdents64(int directory, void* buffer, size_t room)
{
    const int error = liveFaults != nullptr && liveFaults->getdents ? liveFaults->getdents() : 0;
    if (error != 0)
    {
        errno = error;
        return -1;
    }
    const ssize_t size = __real_getdents64(directory, buffer, room);
    if (liveFaults != nullptr && liveFaults->entryRead)
    {
        for (ssize_t position = 0; position < size;)
        {
            auto& entry = *reinterpret_cast<dirent64*>(static_cast<char*>(buffer) + position);
            liveFaults->entryRead(entry);
            position += entry.d_reclen;
        }
    }
    return size;
}

FILE* __real_popen(const char* command, const char* mode);
FILE* __wrap_popen(const char* command, const char* mode)
{
    if (liveFaults == nullptr || !liveFaults->popenError)
    {
        return __real_popen(command, mode);
    }
    errno = *liveFaults->popenError;
    return nullptr;
}

char* __real_strdup(const char* text);
char* __wrap_strdup(const char* text)
{
    return liveFaults != nullptr && liveFaults->textsCantBeCopied ? nullptr : __real_strdup(text);
}

void* __real_calloc(size_t count, size_t size);
void* __wrap_calloc(size_t count, size_t size)
{
    return liveFaults != nullptr && liveFaults->listsCantBeAllocated ? nullptr : __real_calloc(count, size);
}

// operator new(std::size_t)
void* __real__Znwm(std::size_t size);
void* __wrap__Znwm(std::size_t size)
{
    if (liveFaults != nullptr && size == liveFaults->failingAllocation)
    {
        throw std::bad_alloc();
    }
    return __real__Znwm(size);
}
}

// Zol::DnUtil::getClass(const std::string&)
std::string realClassOfDn(const std::string& dn) __asm__(
    "__real__ZN3Zol6DnUtil8getClassERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE");
std::string wrappedClassOfDn(const std::string& dn) __asm__(
    "__wrap__ZN3Zol6DnUtil8getClassERKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEE");
std::string wrappedClassOfDn(const std::string& dn)
{
    if (liveFaults != nullptr && liveFaults->classOfDn)
    {
        liveFaults->classOfDn();
    }
    return realClassOfDn(dn);
}
