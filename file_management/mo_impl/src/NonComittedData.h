#pragma once

#include "PathCompare.h"

#include <set>

namespace ZolFileManagement
{

/// What a transaction is to change on disk and has not yet. Directories stand here in directory form, files
/// in file form.
struct NonComittedData
{
    using Paths = std::set<Poco::Path, PathCompare>;

    Paths _createdDirs;
    Paths _deletedDirs; // and any other path that the action `remove` was asked for
    Paths _deletedFiles;

    /// Withdraws the deletion of the very same path if there is one, instead of adding to it.
    void addCreatedDir(const Poco::Path& path);
    /// Withdraws the creation of the very same path if there is one, instead of adding to it.
    void addDeletedDir(const Poco::Path& path);
    void addDeletedFile(const Poco::Path& path);
    bool isDirCreated(const Poco::Path& path) const;
    void reset();
};

} // namespace ZolFileManagement
