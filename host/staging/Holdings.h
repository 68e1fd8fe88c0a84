#pragma once

#include <map>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace zolhost
{

/// Which open transactions of this process hold which paths. Any thread may call.
class Holdings
{
public:
    void add(unsigned long txHandle, const std::string& path);
    void remove(unsigned long txHandle, const std::string& path);
    void removeAll(unsigned long txHandle);

    /// The handles of other transactions that hold the path, something below it or a directory above it,
    /// sorted.
    std::vector<unsigned long> others(unsigned long txHandle, const std::string& path) const;

private:
    mutable std::mutex _mutex; // protects all below
    std::map<std::string, std::set<unsigned long>> _holders;
};

} // namespace zolhost
