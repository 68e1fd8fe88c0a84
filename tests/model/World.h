#pragma once

#include "model/Disk.h"
#include "model/Location.h"
#include "model/Surroundings.h"

#include <string>

namespace zolmodel
{

/// Answers that are wrong on purpose, to show that a difference is found.
enum class Mistake
{
    None,
    IgnoresSetGroupId,
    DecodesOneEscapeOnly,
    KillsItself ///< not an answer at all: the process ends as by a fault
};

/// What all transactions of the model share.
struct World
{
    World(const std::string& sandbox, const std::string& rootDirectory, Surroundings told);

    Disk disk;
    std::string root;       ///< the internal root
    std::string changeable; ///< changes are let through below this directory only
    Surroundings surroundings;
    unsigned long long lastIteratorId = 0;
    Mistake mistake = Mistake::None;

    // Questions to the disk by a location, which loses its closing slash on the way.
    bool exists(const Location& location) const { return disk.exists(location.textWithoutSlash()); }
    bool isLink(const Location& location) const { return disk.isLink(location.asFile().text()); }
    bool hasMarker(const Location& directory, const char* marker) const;

    /// Throws OutOfReach if a change at that place is not let through.
    void requireChangeable(const Location& location) const;
};

} // namespace zolmodel
