#pragma once

#include "staging/Progress.h"
#include "staging/RememberedEntries.h"

#include <compare>
#include <map>
#include <string>
#include <vector>

namespace zolhost
{

/// How the disk was under what is staged, at the time when it was staged.
class Baseline
{
public:
    /// What has changed since.
    struct Drift
    {
        using What = DiskChange;
        std::string staged; ///< the path that is staged
        std::string path;   ///< that itself, something in it, or what it depends on such as the directory
                            ///< above; without a closing slash
        What what = What::Changed;

        bool operator==(const Drift&) const = default;
        // NOLINTNEXTLINE(modernize-use-nullptr): the checker misreads it
        auto operator<=>(const Drift&) const = default;
    };

    /// Remembers a path of a plan as it is now: with all that is in it if it is there, otherwise that it
    /// isn't and the nearest directory above it that is. A path that is remembered already keeps what was
    /// seen first.
    void remember(const std::string& path, const Progress& progress = {});
    void forget(const std::string& path);
    void clear();

    /// Sorted. Of a directory that appeared, vanished or was replaced, nothing that is in it is told.
    std::vector<Drift> drift(const Progress& progress = {}) const;

private:
    /// One that isn't there.
    struct Missing
    {
        std::string above; ///< the nearest directory that is
        RememberedEntries directory;
        bool isMakingForbidden = false; ///< by a marker in it
    };
    std::map<std::string, RememberedEntries> _there; // by the path as it is staged
    std::map<std::string, Missing> _missing;
};

} // namespace zolhost
