#pragma once

#include "staging/Progress.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zolhost
{

class Plan;

/// What on the disk speaks against changing a place. A component refuses some of it without a word.
struct Protections
{
    bool isThere = false;
    bool isLink = false;
    std::string linkTarget;                 ///< as the link holds it
    std::vector<std::string> markers;       ///< names of the markers in the directory itself
    std::vector<std::string> markersBelow;  ///< paths of those further down, which go along with a tree
    std::vector<std::string> parentMarkers; ///< names of the markers in the directory above
    std::string aFileBelow; ///< path of a visible file in the subtree, the first in byte order; empty if
                            ///< there is none
    std::size_t filesBelow = 0;
};

/// A file is visible if a component counts it: a regular file, no link, no marker, not among `removedFiles`
/// or below `removedTrees` of the plan. Links to directories are gone through, as a component does, each
/// directory once; a relative target is looked up from the working directory.
Protections protectionsOf(const std::string& path, const Plan& plan, const Progress& progress = {});

/// The names of marker files.
bool isMarkerName(const std::string& name);

} // namespace zolhost
