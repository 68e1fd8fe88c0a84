#pragma once

#include <Poco/Path.h>
#include <set>

namespace zolbench
{

/// Builds both texts at each comparison.
struct LiteralOrder
{
    bool operator()(const Poco::Path& left, const Poco::Path& right) const
    {
        return left.toString() < right.toString();
    }
};

using LiteralPaths = std::set<Poco::Path, LiteralOrder>;

/// What waits for its commit.
struct LiteralChanges
{
    LiteralPaths createdDirs;
    LiteralPaths deletedDirs;
    LiteralPaths deletedFiles;

    void addCreatedDir(const Poco::Path& path);
    void commit();
};

} // namespace zolbench
