#pragma once

#include "PathCompare.h"

#include <Poco/DirectoryIterator.h>
#include <Poco/Path.h>
#include <set>
#include <string>

namespace zoltest
{

/// What waits in a transaction, as sets of paths.
struct PlainChanges
{
    using Paths = std::set<Poco::Path, ZolFileManagement::PathCompare>;

    Paths createdDirs;
    Paths deletedDirs;
    Paths deletedFiles;

    void addCreatedDir(const Poco::Path& path);
    void addDeletedDir(const Poco::Path& path);
};

bool isPlainLink(const Poco::Path& path);

/// A walk as its rules state it: each question about an entry is a look of its own, and all new directories
/// of the transaction are kept and tried.
class PlainWalk
{
public:
    PlainWalk(const Poco::Path& directory, const PlainChanges& changes, bool iterateFiles);

    bool getNext(Poco::Path& entry);
    bool lastIsFile() const { return _lastIsFile; }

private:
    bool getNextFromFileSystem(Poco::Path& entry);
    bool getNextFromCreatedDirs(Poco::Path& entry);
    void clear();

    bool _lastIsFile = false;
    bool _iterateFiles;
    Poco::DirectoryIterator _dirIterator;
    PlainChanges::Paths _pendingDirs;
    Poco::Path _directory;
    const PlainChanges& _changes;
};

} // namespace zoltest
