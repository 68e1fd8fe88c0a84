#pragma once

#include <filesystem>
#include <string>

namespace zoltest
{

/// Makes a folder the working directory of the process until the end of its life.
class ScopedDirectory
{
public:
    explicit ScopedDirectory(const std::string& path)
        : _previous(std::filesystem::current_path())
    {
        std::filesystem::current_path(path);
    }
    ScopedDirectory(const ScopedDirectory&) = delete;
    ScopedDirectory& operator=(const ScopedDirectory&) = delete;
    ~ScopedDirectory() { std::filesystem::current_path(_previous); }

private:
    std::filesystem::path _previous;
};

} // namespace zoltest
