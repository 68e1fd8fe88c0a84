#include "support/FakeZolea.h"

#include <cstdlib>
#include <fstream>

namespace zoltest
{

FakeZolea::FakeZolea(const std::string& script)
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
