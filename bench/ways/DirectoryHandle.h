#pragma once

#include "ways/Require.h"

#include <fcntl.h>
#include <string>
#include <unistd.h>
#include <utility>

namespace zolbench
{

/// An open directory by its descriptor.
class DirectoryHandle
{
public:
    explicit DirectoryHandle(const std::string& path, int flags = O_RDONLY)
        : DirectoryHandle(AT_FDCWD, path.c_str(), flags)
    {}
    DirectoryHandle(int parent, const char* name, int flags = O_RDONLY)
        : _number(::openat(parent, name, flags | O_DIRECTORY | O_CLOEXEC))
    {
        require(_number >= 0, name);
    }
    DirectoryHandle(DirectoryHandle&& other) noexcept
        : _number(std::exchange(other._number, -1))
    {}
    DirectoryHandle& operator=(DirectoryHandle&& other) noexcept
    {
        std::swap(_number, other._number);
        return *this;
    }
    ~DirectoryHandle()
    {
        if (_number >= 0)
        {
            ::close(_number);
        }
    }

    int number() const { return _number; }

private:
    int _number;
};

} // namespace zolbench
