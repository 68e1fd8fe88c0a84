#pragma once

#include "DirectoryEntries.h"
#include "NonComittedData.h"

#include <Poco/Path.h>
#include <string>
#include <sys/types.h>

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
    /// A walk that a call of the host begins and ends goes by what the directory says that its entries are,
    /// once it has seen that they can be looked at. Otherwise each entry is looked at when its turn has come.
    enum class Span
    {
        SeveralCalls,
        OneCall
    };

    /// `changes` must outlive the iterator.
    FileGroupIterator(const Poco::Path& directory, const NonComittedData& changes, bool iterateFiles,
                      Span span = Span::SeveralCalls) noexcept
        : FileGroupIterator(directory.toString(), changes, iterateFiles, span)
    {}
    /// For the text of a path.
    FileGroupIterator(std::string directory, const NonComittedData& changes, bool iterateFiles,
                      Span span) noexcept;

    /// True if `entry` was assigned, false at the end and from then on.
    bool getNext(Poco::Path& entry) noexcept;
    /// The same, for the last component of the path alone.
    bool getNext(std::string& name) noexcept;

    bool getNextFromFileSystem(Poco::Path& entry);
    bool getNextFromCreatedDirs(Poco::Path& entry);
    void clear();

    /// Whether the file that came last could be a link that its target makes a file.
    bool lastMayBeLink() const { return _lastMayBeLink; }
    /// Whether a walk for the directories on disk would yield or tell anything, as far as this one has come.
    bool hasMoreThanFiles() const { return _hasMoreThanFiles || _entries.isCutShort(); }

    /// The target is looked up as the link holds it, so a relative one from the working directory of the
    /// process.
    static bool isLinkReferringToDirectory(const std::string& linkPath);
    static std::string getLinkTarget(const std::string& linkPath);

    /// The last entry on disk that was taken for a file or a directory, wanted or not, was a file. The names
    /// of all that is yielded are encoded by it.
    bool _lastIsFile = false;

private:
    enum class Kind
    {
        File,
        Directory,
        None
    };

    void open();
    bool findOnDisk();
    std::string textOfLast() const;
    Kind examine(mode_t type);
    Kind examineByTarget(const std::string& text, bool isALink);
    bool isDeleted() const;

    bool _iterateFiles;
    Span _span;
    bool _lastMayBeLink = false;
    bool _hasMoreThanFiles = false;
    bool _isSearchable = false; // as an entry has shown
    DirectoryEntries _entries;
    std::string _directory; // its text, in directory form while there are entries
    std::string _name;      // of the entry that was taken last
    NonComittedData::Paths _pendingDirs;
    const NonComittedData& _changes;
};

} // namespace ZolFileManagement
