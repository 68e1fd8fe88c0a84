#pragma once

#include "staging/Preview.h"
#include "staging/Progress.h"

#include <map>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

namespace zolhost
{

/// The disk as it is, with changes on top that are not made: what a component's way of making and removing
/// would do to it. Paths are absolute and without a closing slash.
class SimulatedDisk
{
public:
    explicit SimulatedDisk(const Progress& progress);

    struct Making
    {
        bool wasThere = false; ///< that or something else of the name
        bool endsCommit = false;
        std::string why; ///< what is in the way; empty if the directory gets its mode
        mode_t mode = 0; ///< that it gets, or would
    };
    /// A directory with those above it that are missing; then gives it the mode of a new directory.
    Making make(const std::string& path);

    struct Removal
    {
        bool wasThere = false;
        std::string why; ///< what is in the way; empty if all of it goes
        EntryKind kind = EntryKind::File;
        std::uint64_t bytes = 0; ///< of a file
        Contents contents;       ///< what goes along

    private:
        friend SimulatedDisk;
        std::string _where; // the path at which that is
    };
    /// A directory with all that is in it, in the disk's order and up to the first that can't be removed.
    Removal remove(const std::string& path);

    /// Whether a path leads to something.
    bool leadsSomewhere(const std::string& path) const { return resolve(path).entry.has_value(); }
    /// Also for a link that leads nowhere.
    bool isThere(const std::string& path) { return find(path).entry.has_value(); }

    std::vector<Preview::Made> made() const;
    std::vector<Preview::Removed> removed() const; ///< in byte order

private:
    /// Where a path leads to.
    struct Found
    {
        std::string path; ///< has no links
        std::optional<DiskEntry> entry;
        int error = 0; ///< if there is no entry
    };
    struct MadeDirectory
    {
        std::string shown; ///< the path as a plan names it
        DiskEntry entry;
    };
    struct ChangedMode
    {
        std::string shown;
        mode_t before;
        mode_t after;
    };

    Found entryAt(std::string path) const;
    Found resolve(const std::string& path) const;
    /// Where the last name of a path is, be it a link or not.
    Found find(const std::string& path);
    const Found& above(const std::string& path);
    void forgetAbove() { _above.reset(); }
    std::string whyNotChangeable(const Found& directory) const;

    /// These three return what is in the way.
    std::string makeWithMissingAbove(const std::string& path);
    std::string makeOne(const std::string& path);
    std::string setMode(const std::string& path, mode_t& mode);
    mode_t modeOfNew(const DiskEntry& above);

    /// Whether it goes. `whyNot` is what is in the way of all in the directory.
    bool removeOne(const Found& directory, const std::string& whyNot, const Found& entry,
                   const std::string& shown, Removal& removal);
    bool removeOneIn(const Found& directory, const std::string& whyNot, const Found& entry,
                     const std::string& directoryShown, Removal& removal);
    bool removeAllIn(const Found& directory, const std::string& shown, Removal& removal);
    std::optional<std::vector<std::string>> namesIn(const Found& directory) const;

    ProgressCounter _progress;
    std::map<std::string, MadeDirectory> _made; // by the path without links, as the next two
    std::map<std::string, ChangedMode> _modes;  // of directories that were there
    std::unordered_set<std::string> _gone;      // the topmost paths alone
    std::vector<Preview::Removed> _removed;
    std::optional<mode_t> _creationMask;                 // once it is needed
    std::optional<std::pair<std::string, Found>> _above; // the directory that was found last, by its path
};

} // namespace zolhost
