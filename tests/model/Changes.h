#pragma once

#include "model/Location.h"

#include <set>

namespace zolmodel
{

/// What a transaction holds back until its commit.
struct Changes
{
    std::set<Location> createdDirectories;
    std::set<Location> deletedDirectories; ///< and anything else that is removed by force
    std::set<Location> deletedFiles;

    void create(const Location& directory);
    void remove(const Location& directory);
    bool isDeleted(const Location& location) const;
};

} // namespace zolmodel
