#pragma once

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>

namespace zoltest
{

/// Makes a folder the working directory of the process until the end of its life.
class WorkingDirectory
{
public:
    explicit WorkingDirectory(const std::string& directory)
        : _previous(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC))
    {
        std::filesystem::current_path(directory);
    }
    WorkingDirectory(const WorkingDirectory&) = delete;
    WorkingDirectory& operator=(const WorkingDirectory&) = delete;
    ~WorkingDirectory()
    {
        if (::fchdir(_previous) != 0)
        {
            std::perror("the working directory before is gone");
        }
        ::close(_previous);
    }

private:
    int _previous; // a handle: not everyone may know the path
};

} // namespace zoltest
