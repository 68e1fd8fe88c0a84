#include "staging/Plan.h"

namespace zolhost
{

void Plan::makeDirectory(const std::string& path)
{
    if (_removedTrees.erase(path) != 0)
    {
        _cancelled.push_back({path, Cancelled::How::RemovedThenMade});
        return;
    }
    _madeDirectories.insert(path);
}

void Plan::removeDirectory(const std::string& path)
{
    removeTree(path);
    auto below = _madeDirectories.lower_bound(path);
    while (below != _madeDirectories.end() && below->starts_with(path))
    {
        _cancelled.push_back({*below, Cancelled::How::MadeThenRemoved});
        below = _madeDirectories.erase(below);
    }
}

void Plan::removeTree(const std::string& path)
{
    if (_madeDirectories.erase(path) != 0)
    {
        _cancelled.push_back({path, Cancelled::How::MadeThenRemoved});
        return;
    }
    _removedTrees.insert(path);
}

void Plan::removeFile(const std::string& path)
{
    _removedFiles.insert(path);
}

void Plan::clear()
{
    *this = Plan();
}

bool Plan::isEmpty() const
{
    return _madeDirectories.empty() && _removedTrees.empty() && _removedFiles.empty();
}

} // namespace zolhost
