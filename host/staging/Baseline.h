#pragma once

#include "staging/Progress.h"

#include <compare>
#include <cstdint>
#include <map>
#include <string>
#include <sys/types.h>
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
        enum class What
        {
            Appeared,
            Vanished,
            Changed, ///< its content, its mode or its owner
            Replaced ///< by another entry of the same name
        };
        std::string staged; ///< the path that is staged
        std::string path;   ///< that itself, something in it, or what it depends on such as its parent
        What what = What::Changed;

        bool operator==(const Drift&) const = default;
        auto operator<=>(const Drift&) const = default;
    };

    /// Remembers a path of a plan as it is now: with all that is in it if it is to be removed as a tree, and
    /// for a directory to be made the nearest directory above it that is there. A path that is remembered
    /// already keeps what was seen first.
    void remember(const std::string& path, const Progress& progress = {});
    void forget(const std::string& path);
    void clear();

    /// Sorted. A change that the commit of another path of the same plan will bring isn't one.
    std::vector<Drift> drift(const Progress& progress = {}) const;

private:
    struct Entry;
    // the writer of this class settles what is kept
};

} // namespace zolhost
