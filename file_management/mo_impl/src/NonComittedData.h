#pragma once

#include "PathSet.h"

namespace ZolFileManagement
{

/// What a transaction is to change on disk and has not yet. Directories stand here in directory form, files
/// in file form. A path and its text are the same here: who has the text only needn't make the path.
struct NonComittedData
{
    using Paths = PathSet;

    Paths _createdDirs;
    Paths _deletedDirs; // and any other path that the action `remove` was asked for
    Paths _deletedFiles;

    /// Withdraws the deletion of the very same path if there is one, instead of adding to it.
    void addCreatedDir(const Poco::Path& path) { addCreatedDirText(path.toString()); }
    void addCreatedDirText(const std::string& text);
    /// Withdraws the creation of the very same path if there is one, instead of adding to it.
    void addDeletedDir(const Poco::Path& path);
    void addDeletedFile(const Poco::Path& path) { addDeletedFileText(path.toString()); }
    void addDeletedFileText(const std::string& text);
    bool isDirCreated(const Poco::Path& path) const;
    void reset();
};

} // namespace ZolFileManagement
