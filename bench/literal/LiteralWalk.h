#pragma once

#include "literal/LiteralChanges.h"

#include <Poco/DirectoryIterator.h>

namespace zolbench
{

bool isLiteralLink(const Poco::Path& path);

/// The children of a directory of one kind, each asked for by itself.
class LiteralWalk
{
public:
    LiteralWalk(const Poco::Path& directory, const LiteralChanges& changes, bool ofFiles);

    bool next(Poco::Path& entry);

private:
    bool nextOnDisk(Poco::Path& entry);
    bool nextCreated(Poco::Path& entry);

    bool _ofFiles;
    Poco::DirectoryIterator _position;
    LiteralPaths _pending;
    Poco::Path _directory;
    const LiteralChanges& _changes;
};

/// Whether there is a file in the tree below the directory.
bool hasLiteralFiles(const Poco::Path& directory, const LiteralChanges& changes);

} // namespace zolbench
