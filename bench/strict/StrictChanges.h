#pragma once

#include <set>
#include <string>

namespace zolbench
{

/// What waits for its commit: whole texts in the order of their bytes, a slash behind a directory.
struct StrictChanges
{
    std::set<std::string> createdDirs;
    std::set<std::string> deletedDirs;
    std::set<std::string> deletedFiles;

    void addCreatedDir(std::string path);
    void commit();
};

} // namespace zolbench
