#include "staging/Baseline.h"

#include "staging/DiskEntry.h"

#include <algorithm>

namespace zolhost
{

namespace
{

constexpr const char* FORBIDS_MAKING = "/.filemnodirectorycreate";

/// With its closing slash, so that it leads through a link.
std::string nearestDirectoryAbove(const std::string& path)
{
    std::string directory = path;
    do
    {
        directory = directoryAbove(withoutSlash(directory)) + '/';
    } while (directory != "/" && !lookUp(directory));
    return directory;
}

} // namespace

void Baseline::remember(const std::string& path, const Progress& progress)
{
    if (_there.contains(path) || _missing.contains(path))
    {
        return;
    }
    const std::string entry = withoutSlash(path);
    if (lookUp(entry))
    {
        ProgressCounter counter(progress);
        _there.emplace(path, RememberedEntries::allAt(entry, counter));
        return;
    }
    const std::string above = nearestDirectoryAbove(path);
    _missing.emplace(path, Missing{withoutSlash(above), RememberedEntries::oneAt(above),
                                   lookUp(above + FORBIDS_MAKING).has_value()});
}

void Baseline::forget(const std::string& path)
{
    _there.erase(path);
    _missing.erase(path);
}

void Baseline::clear()
{
    *this = Baseline();
}

std::vector<Baseline::Drift> Baseline::drift(const Progress& progress) const
{
    std::vector<Drift> drift;
    ProgressCounter counter(progress);
    for (const auto& [staged, entries] : _there)
    {
        entries.eachChange(withoutSlash(staged), counter,
                           [&, &path = staged](const std::string& changed, DiskChange change) {
                               drift.push_back({path, changed, change});
                           });
    }
    for (const auto& [staged, missing] : _missing)
    {
        if (lookUp(withoutSlash(staged)))
        {
            drift.push_back({staged, withoutSlash(staged), DiskChange::Appeared});
        }
        missing.directory.eachChange(
            missing.above + '/', counter,
            [&, &path = staged, &above = missing.above](const std::string&, DiskChange change) {
                drift.push_back({path, above, change});
            });
        const std::string marker = missing.above + FORBIDS_MAKING;
        if (lookUp(marker).has_value() != missing.isMakingForbidden)
        {
            drift.push_back(
                {staged, marker, missing.isMakingForbidden ? DiskChange::Vanished : DiskChange::Appeared});
        }
    }
    std::ranges::sort(drift);
    return drift;
}

} // namespace zolhost
