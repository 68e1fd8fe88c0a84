#include "support/FakeZolea.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sys/statvfs.h>

namespace zoltest
{

namespace
{

// Memory that serves as a disk may be no place for programs.
std::string folderForPrograms()
{
    struct statvfs status = {};
    const std::string folder = std::filesystem::temp_directory_path();
    const bool isNoPlace = statvfs(folder.c_str(), &status) == 0 && (status.f_flag & ST_NOEXEC) != 0;
    return isNoPlace ? P_tmpdir : folder;
}

} // namespace

FakeZolea::FakeZolea(const std::string& script)
    : _folder(folderForPrograms())
{
    if (const char* path = std::getenv("PATH"))
    {
        _previousPath = path;
    }
    setScript(script);
    setenv("PATH", (_folder.path() + ":" + _previousPath).c_str(), 1);
}

FakeZolea::~FakeZolea()
{
    setenv("PATH", _previousPath.c_str(), 1);
}

void FakeZolea::setScript(const std::string& script)
{
    _folder.file("zolea", "#!/bin/sh\necho \"$*\" >>'" + _folder.path("runs") + "'\n" + script + "\n");
    _folder.chmod("zolea", 0755);
}

std::vector<std::string> FakeZolea::runs() const
{
    std::ifstream stream(_folder.path("runs"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
    {
        lines.push_back(line);
    }
    return lines;
}

} // namespace zoltest
