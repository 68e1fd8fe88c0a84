#pragma once

#include "engine/Place.h"
#include "staging/Plan.h"

#include <string>
#include <string_view>
#include <vector>

namespace zolhost
{

/// Whether a name that an operator gives is taken for a DN, not for a path.
bool isDn(std::string_view text);

/// Finds what an operator means by a name: a DN, whole or from below the root, or a path of names with
/// slashes between, from where the operator stands or, with a slash in front, from the root. A name may be
/// the value that a listing shows or the name on disk, which wins.
class PlaceFinder
{
public:
    enum class Wanted
    {
        Anything, ///< a directory wins over a file; what isn't there counts as a file unless a slash ends it
        Directory,
        File
    };

    /// What the plan makes counts as there. The plan must outlive the finder.
    PlaceFinder(std::string rootDirectory, const Plan& plan);

    /// Throws Refusal for what can't be a name, leaves the tree, or is the value of more than one name.
    Place find(std::string_view text, const Place& from, Wanted wanted = Wanted::Anything) const;

    /// Whether a directory is there, or will be.
    bool isDirectory(const Place& place) const;

private:
    Place findDn(std::string_view text) const;
    Place findPath(std::string_view text, const Place& from, Wanted wanted) const;
    /// One step downwards.
    Place below(const Place& parent, std::string_view value, Wanted wanted, std::string_view whole,
                bool isInDn) const;

    std::string _rootDirectory;
    const Plan& _plan;
};

} // namespace zolhost
