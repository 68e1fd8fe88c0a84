#include "staging/Holdings.h"

#include "staging/DiskEntry.h"

#include <iterator>

namespace zolhost
{

void Holdings::add(unsigned long txHandle, const std::string& path)
{
    const std::lock_guard lock(_mutex);
    _holders[path].insert(txHandle);
}

void Holdings::remove(unsigned long txHandle, const std::string& path)
{
    const std::lock_guard lock(_mutex);
    const auto held = _holders.find(path);
    if (held != _holders.end() && held->second.erase(txHandle) != 0 && held->second.empty())
    {
        _holders.erase(held);
    }
}

void Holdings::removeAll(unsigned long txHandle)
{
    const std::lock_guard lock(_mutex);
    for (auto held = _holders.begin(); held != _holders.end();)
    {
        held->second.erase(txHandle);
        held = held->second.empty() ? _holders.erase(held) : std::next(held);
    }
}

std::vector<unsigned long> Holdings::others(unsigned long txHandle, const std::string& path) const
{
    const std::lock_guard lock(_mutex);
    std::set<unsigned long> handles;
    const auto addHolders = [&](const std::string& held) {
        if (const auto holders = _holders.find(held); holders != _holders.end())
        {
            handles.insert(holders->second.begin(), holders->second.end());
        }
    };
    // one and the same place can be held as a directory and as a file
    const std::string directory = withoutSlash(path) + '/';
    for (auto slash = directory.find('/', 1); slash != std::string::npos;
         slash = directory.find('/', slash + 1))
    {
        addHolders(directory.substr(0, slash));
        addHolders(directory.substr(0, slash + 1));
    }
    for (auto held = _holders.upper_bound(directory);
         held != _holders.end() && held->first.starts_with(directory); ++held)
    {
        handles.insert(held->second.begin(), held->second.end());
    }
    handles.erase(txHandle);
    return {handles.begin(), handles.end()};
}

} // namespace zolhost
