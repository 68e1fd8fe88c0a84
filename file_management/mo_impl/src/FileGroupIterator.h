#pragma once

#include "NonComittedData.h"

#include <Poco/DirectoryIterator.h>
#include <Poco/Path.h>
#include <string>

namespace ZolFileManagement
{

/// Walks the files or the subdirectories of one directory, as a transaction sees them: first what is on disk,
/// in the order of the directory, then the transaction's new directories. Deletions are seen live, creations
/// as they were when the iterator was made.
///
/// It knows nothing of DNs. A file comes in file form and a directory in directory form, so that it can be
/// looked up in NonComittedData. A walk that fails ends early, which a caller can't tell from its end.
class FileGroupIterator
{
public:
    /// `changes` must outlive the iterator.
    FileGroupIterator(const Poco::Path& directory, const NonComittedData& changes,
                      bool iterateFiles) noexcept;

    /// True if `entry` was assigned, false at the end and from then on.
    bool getNext(Poco::Path& entry) noexcept;

    bool getNextFromFileSystem(Poco::Path& entry);
    bool getNextFromCreatedDirs(Poco::Path& entry);
    void clear();

    /// The target is looked up as the link holds it, so a relative one from the working directory of the
    /// process.
    static bool isLinkReferringToDirectory(const std::string& linkPath);
    static std::string getLinkTarget(const std::string& linkPath);

    /// The last entry on disk that was taken for a file or a directory, wanted or not, was a file. The names
    /// of all that is yielded are encoded by it.
    bool _lastIsFile = false;

private:
    bool _iterateFiles;
    Poco::DirectoryIterator _dirIterator; // at its end when default-constructed
    NonComittedData::Paths _pendingDirs;
    Poco::Path _directory;
    const NonComittedData& _changes;
};

} // namespace ZolFileManagement
