#pragma once

#include "model/Changes.h"
#include "model/Disk.h"
#include "model/Surroundings.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zolmodel
{

enum class Wanted
{
    Files,
    Directories
};

/// The children of one directory, as a transaction sees them.
class Walk
{
public:
    Walk(const Disk& disk, const Surroundings& surroundings, const Changes& changes,
         const Location& directory, Wanted wanted);

    std::optional<Location> next();

    /// Whether the last entry on disk whose kind was told was a file.
    bool lastWasFile() const { return _lastWasFile; }

    /// The stream is at its end, and entries were added since it was opened: nobody can tell whether it goes
    /// on with them.
    bool isUncertain() const;

private:
    enum class Step
    {
        Yields,
        Skips,
        Breaks
    };

    Step look(const std::string& name, Location& found);
    bool leadsToDirectory(const std::string& link) const;
    std::optional<Location> nextCreated();
    void end();

    const Disk& _disk;
    const Changes& _changes;
    Location _directory;
    Wanted _wanted;
    std::vector<std::string> _names;
    std::size_t _position = 0;
    std::set<Location> _pending;
    bool _lastWasFile = false;
    std::shared_ptr<unsigned> _additions; ///< of the directory that the stream is on
    unsigned _additionsAtOpening = 0;
};

} // namespace zolmodel
