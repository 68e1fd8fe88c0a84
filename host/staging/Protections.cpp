#include "staging/Protections.h"

#include "staging/DiskEntry.h"
#include "staging/Plan.h"

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace zolhost
{

namespace
{

constexpr std::array<const char*, 3> MARKERS = {".filemnodirectorycreate", ".filemnodirectorydelete",
                                                ".filemnohousekeeping"};

std::optional<struct stat> statusOf(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

std::vector<std::string> markersIn(const std::string& directory)
{
    std::vector<std::string> markers;
    std::ranges::copy_if(MARKERS, std::back_inserter(markers), [&](const std::string& name) {
        return statusOf(pathIn(directory, name)).has_value();
    });
    return markers;
}

/// Goes through a subtree as a component does.
class VisibleFiles
{
public:
    VisibleFiles(const Plan& plan, Protections& found, const Progress& progress)
        : _plan(plan)
        , _found(found)
        , _progress(progress)
    {}

    void countBelow(const std::string& directory)
    {
        countIn(directory);
        // after all that is really there, so that what is reached twice counts where it is
        _isLinked = true;
        while (!_links.empty())
        {
            const std::string link = std::move(_links.back());
            _links.pop_back();
            countIn(link);
        }
    }

private:
    void countIn(const std::string& directory)
    {
        const auto status = statusOf(directory);
        if (!status || !_seen.emplace(status->st_dev, status->st_ino).second)
        {
            return;
        }
        for (const auto& name : namesIn(directory).value_or(std::vector<std::string>{}))
        {
            _progress.count();
            const std::string path = pathIn(directory, name);
            const auto entry = lookUp(path);
            if (entry && entry->kind == EntryKind::File)
            {
                countFile(path);
            }
            else if (entry && entry->kind == EntryKind::Directory && !isRemoved(path + '/'))
            {
                noteMarkers(path);
                countIn(path);
            }
            else if (entry && entry->kind == EntryKind::Link && !isRemoved(path + '/') &&
                     leadsToDirectory(path))
            {
                _links.push_back(path);
            }
        }
    }

    void noteMarkers(const std::string& directory)
    {
        if (!_isLinked)
        {
            for (const auto& marker : markersIn(directory))
            {
                _found.markersBelow.push_back(pathIn(directory, marker));
            }
        }
    }

    void countFile(const std::string& path)
    {
        if (isMarkerName(lastNameOf(path)) || isRemoved(path))
        {
            return;
        }
        if (_found.filesBelow++ == 0 || path < _found.aFileBelow)
        {
            _found.aFileBelow = path;
        }
    }

    bool isRemoved(const std::string& path) const
    {
        return _plan.removedFiles().contains(path) || _plan.removedTrees().contains(path);
    }

    /// A component looks a target up as the link holds it, a relative one from the working directory.
    static bool leadsToDirectory(const std::string& link)
    {
        const auto status = statusOf(linkTargetOf(link));
        return status && S_ISDIR(status->st_mode);
    }

    const Plan& _plan;
    Protections& _found;
    ProgressCounter _progress;
    std::set<std::pair<dev_t, ino_t>> _seen; // directories
    std::vector<std::string> _links;         // to directories
    bool _isLinked = false;                  // a link leads to what is looked at
};

} // namespace

bool isMarkerName(const std::string& name)
{
    return std::ranges::find(MARKERS, name) != MARKERS.end();
}

Protections protectionsOf(const std::string& path, const Plan& plan, const Progress& progress)
{
    const std::string place = withoutSlash(path);
    Protections found;
    found.parentMarkers = markersIn(directoryAbove(place));
    const auto entry = lookUp(place);
    if (!entry)
    {
        return found;
    }
    found.isThere = true;
    found.isLink = entry->kind == EntryKind::Link;
    if (found.isLink)
    {
        found.linkTarget = linkTargetOf(place);
    }
    else if (entry->kind == EntryKind::Directory)
    {
        found.markers = markersIn(place);
        VisibleFiles(plan, found, progress).countBelow(place);
        std::ranges::sort(found.markersBelow);
    }
    return found;
}

} // namespace zolhost
