#pragma once

#include "staging/DiskEntry.h"
#include "staging/Plan.h"
#include "staging/Progress.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zolhost
{

/// What goes along with a directory that is removed, the directory itself not counted.
struct Contents
{
    std::size_t directories = 0;
    std::size_t files = 0; ///< markers too
    std::size_t links = 0;
    std::size_t others = 0;
    std::uint64_t bytes = 0;          ///< of the files
    std::vector<std::string> markers; ///< paths

    bool operator==(const Contents&) const = default;
};

/// What a commit would do now, if nobody else changed the disk meanwhile.
struct Preview
{
    /// One path of the plan.
    struct Item
    {
        enum class Kind
        {
            MakeDirectory,
            RemoveFile,
            RemoveTree
        };
        enum class Outlook
        {
            Done,
            NothingToDo, ///< a directory that is there already and only gets its mode; a path that is gone
                         ///< already
            Fails,       ///< stays, of a tree perhaps only a part; is not made, or doesn't get its mode
            NotReached   ///< comes after a directory at which the commit ends
        };
        Kind kind = Kind::RemoveFile;
        std::string path; ///< as in the plan
        Outlook outlook = Outlook::Done;
        std::string why;             ///< of what isn't Done, in words for an operator
        mode_t mode = 0;             ///< of a directory to be made
        bool isMadeAgain = false;    ///< a file in whose place there is a directory at the end
        bool isRemovedAgain = false; ///< a directory whose path leads to nothing at the end
        std::uint64_t bytes = 0;     ///< of a file to be removed
        Contents contents;           ///< what goes along with a directory to be removed
    };

    /// One change of the disk, all items expanded: first all of `removed` goes, then comes what is in `made`.
    /// What is made and removed by one commit is in neither list. A path goes through links as that of the
    /// item does.
    struct Made
    {
        std::string path; ///< without a closing slash
        mode_t mode = 0;
        bool isThere = false; ///< and only its mode changes
        bool operator==(const Made&) const = default;
    };
    struct Removed
    {
        std::string path; ///< without a closing slash
        EntryKind kind = EntryKind::File;
        std::uint64_t bytes = 0; ///< of a file
        bool operator==(const Removed&) const = default;
    };

    std::vector<Item> items;      ///< in the order of the commit: files, new directories, trees
    std::vector<Made> made;       ///< directories that come to be, or whose mode changes, in byte order
    std::vector<Removed> removed; ///< in byte order
    std::vector<Plan::Cancelled> cancelled;

    /// Everything that is planned would be so after the commit.
    bool isComplete() const;
    bool changesNothing() const { return made.empty() && removed.empty(); }
};

/// Looks at the disk alone. `progress` counts entries.
Preview previewOf(const Plan& plan, const Progress& progress = {});

} // namespace zolhost
