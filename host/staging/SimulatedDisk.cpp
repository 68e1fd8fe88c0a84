#include "staging/SimulatedDisk.h"

#include "staging/Protections.h"
#include "staging/Rights.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

namespace zolhost
{

namespace
{

constexpr mode_t NEW_DIRECTORY = 0770;
constexpr int MOST_LINKS = 40; // that the system follows in one path

/// Paths without links have no closing slash, so that of the topmost directory is empty.
std::string onDisk(const std::string& path)
{
    return path.empty() ? "/" : path;
}

bool isDirectory(const std::optional<DiskEntry>& entry)
{
    return entry && entry->kind == EntryKind::Directory;
}

void add(const DiskEntry& entry, const std::string& shown, Contents& contents)
{
    switch (entry.kind)
    {
    case EntryKind::Directory:
        ++contents.directories;
        break;
    case EntryKind::File:
        ++contents.files;
        contents.bytes += entry.bytes;
        break;
    case EntryKind::Link:
        ++contents.links;
        break;
    case EntryKind::Other:
        ++contents.others;
        break;
    }
    if (isMarkerName(lastNameOf(shown)))
    {
        contents.markers.push_back(shown);
    }
}

} // namespace

SimulatedDisk::SimulatedDisk(const Progress& progress)
    : _progress(progress)
{}

SimulatedDisk::Found SimulatedDisk::entryAt(std::string path) const
{
    if (const auto made = _made.find(path); made != _made.end())
    {
        return {std::move(path), made->second.entry};
    }
    if (lastNameOf(path).size() > NAME_MAX || path.size() >= PATH_MAX)
    {
        return {std::move(path), std::nullopt, ENAMETOOLONG};
    }
    if (_gone.contains(path) || _made.contains(directoryAbove(path)))
    {
        return {std::move(path), std::nullopt, ENOENT};
    }
    auto entry = lookUp(onDisk(path));
    const int error = entry ? 0 : errno;
    if (const auto changed = _modes.find(path); entry && changed != _modes.end())
    {
        entry->mode = changed->second.after;
    }
    return {std::move(path), entry, error};
}

SimulatedDisk::Found SimulatedDisk::resolve(const std::string& path) const
{
    Found found = entryAt("");
    std::string rest = path;
    int links = 0;
    for (;;)
    {
        rest.erase(0, rest.find_first_not_of('/'));
        if (rest.empty())
        {
            return found;
        }
        const std::string name = rest.substr(0, rest.find('/'));
        rest.erase(0, name.size());
        if (name == "." || name == "..")
        {
            found = entryAt(name == "." ? found.path : directoryAbove(found.path));
            continue;
        }
        if (!isDirectory(found.entry))
        {
            return {found.path, std::nullopt, ENOTDIR};
        }
        const std::string above = found.path;
        found = entryAt(pathIn(above, name));
        if (!found.entry)
        {
            return found;
        }
        if (found.entry->kind == EntryKind::Link)
        {
            if (++links > MOST_LINKS)
            {
                return {found.path, std::nullopt, ELOOP};
            }
            const std::string target = linkTargetOf(found.path);
            found = entryAt(target.starts_with('/') ? "" : above);
            rest.insert(0, target);
        }
    }
}

const SimulatedDisk::Found& SimulatedDisk::above(const std::string& path)
{
    std::string directory = directoryAbove(path);
    if (!_above || _above->first != directory)
    {
        Found found = resolve(directory);
        _above.emplace(std::move(directory), std::move(found));
    }
    return _above->second;
}

SimulatedDisk::Found SimulatedDisk::find(const std::string& path)
{
    const Found& directory = above(path);
    if (!isDirectory(directory.entry))
    {
        return {path, std::nullopt, directory.entry ? ENOTDIR : directory.error};
    }
    return entryAt(pathIn(directory.path, lastNameOf(path)));
}

std::string SimulatedDisk::whyNotChangeable(const Found& directory) const
{
    if (!_made.contains(directory.path) && !_modes.contains(directory.path))
    {
        return whyNotWritable(onDisk(directory.path));
    }
    // its owner is this process or one that it may ignore
    const bool isWritable = geteuid() == 0 || (~directory.entry->mode & (S_IWUSR | S_IXUSR)) == 0;
    return isWritable ? "" : reason(EACCES, NOT_WRITABLE);
}

SimulatedDisk::Making SimulatedDisk::make(const std::string& path)
{
    _progress.count();
    Making making;
    making.wasThere = leadsSomewhere(path);
    making.why = makeWithMissingAbove(path);
    making.endsCommit = !making.why.empty();
    const Found above = resolve(directoryAbove(path));
    making.mode = NEW_DIRECTORY | (above.entry ? above.entry->mode & S_ISGID : 0);
    if (!making.endsCommit)
    {
        making.why = setMode(path, making.mode);
    }
    return making;
}

std::string SimulatedDisk::makeWithMissingAbove(const std::string& path)
{
    // anything that is there will do, even if it is no directory
    if (leadsSomewhere(path))
    {
        return {};
    }
    const std::string directory = directoryAbove(path);
    const std::string why = directory.empty() ? "" : makeWithMissingAbove(directory);
    return why.empty() ? makeOne(path) : why;
}

std::string SimulatedDisk::makeOne(const std::string& path)
{
    const Found found = find(path);
    const Found directory = above(path);
    if (found.entry)
    {
        return {}; // a link that leads nowhere: that it is there is no failure yet
    }
    if (found.error != ENOENT || !directory.entry)
    {
        return reason(found.error, isDirectory(directory.entry) ? path : directoryAbove(path));
    }
    if (std::string why = whyNotChangeable(directory); !why.empty())
    {
        return why;
    }
    const mode_t groupBit = directory.entry->mode & S_ISGID;
    DiskEntry entry;
    entry.kind = EntryKind::Directory;
    entry.mode = modeOfNew(*directory.entry);
    entry.owner = geteuid();
    entry.group = groupBit != 0 ? directory.entry->group : getegid();
    _made.insert({found.path, {path, entry}});
    forgetAbove();
    return {};
}

mode_t SimulatedDisk::modeOfNew(const DiskEntry& above)
{
    if (!_creationMask)
    {
        _creationMask = creationMask();
    }
    return (ACCESSPERMS & ~*_creationMask) | (above.mode & S_ISGID);
}

std::string SimulatedDisk::setMode(const std::string& path, mode_t& mode)
{
    const Found found = resolve(path);
    if (!found.entry)
    {
        return reason(found.error, "a link that leads nowhere is there");
    }
    if (found.entry->kind != EntryKind::Directory)
    {
        return reason(ENOTDIR, "something else of this name is there");
    }
    mode = modeAfterChange(mode, *found.entry);
    if (const auto made = _made.find(found.path); made != _made.end())
    {
        made->second.entry.mode = mode;
    }
    else
    {
        if (std::string why = whyModeCantChange(onDisk(found.path), *found.entry); !why.empty())
        {
            return why;
        }
        _modes.insert({found.path, {path, found.entry->mode, mode}}).first->second.after = mode;
    }
    forgetAbove();
    return {};
}

SimulatedDisk::Removal SimulatedDisk::remove(const std::string& path)
{
    Removal removal;
    const Found entry = find(path);
    if (!entry.entry)
    {
        removal.wasThere = !meansAbsence(entry.error);
        removal.why = removal.wasThere ? reason(entry.error) : "";
        return removal;
    }
    const Found directory = above(path);
    removal.wasThere = true;
    removal.kind = entry.entry->kind;
    removal.bytes = removal.kind == EntryKind::File ? entry.entry->bytes : 0;
    if (removeOne(directory, whyNotChangeable(directory), entry, path, removal))
    {
        _gone.insert(entry.path);
    }
    else if (removal._where != path)
    {
        const std::string where = removal._where.substr(path.size() - lastNameOf(path).size());
        removal.why = std::string(std::strerror(ENOTEMPTY)) + ", in " + where + ": " + removal.why;
    }
    if (removal.kind != EntryKind::File)
    {
        forgetAbove();
    }
    std::ranges::sort(removal.contents.markers);
    return removal;
}

bool SimulatedDisk::removeOne(const Found& directory, const std::string& whyNot, const Found& entry,
                              const std::string& shown, Removal& removal)
{
    _progress.count();
    if (isDirectory(entry.entry) && !removeAllIn(entry, shown, removal))
    {
        return false;
    }
    const std::string why = whyNot.empty() ? whyNotRemovable(*directory.entry, *entry.entry) : whyNot;
    if (!why.empty())
    {
        removal.why = why;
        removal._where = shown;
        return false;
    }
    if (_made.erase(entry.path) == 0)
    {
        _modes.erase(entry.path);
        const EntryKind kind = entry.entry->kind;
        _removed.push_back({shown, kind, kind == EntryKind::File ? entry.entry->bytes : 0});
    }
    return true;
}

bool SimulatedDisk::removeAllIn(const Found& directory, const std::string& shown, Removal& removal)
{
    const auto names = namesIn(directory);
    if (!names)
    {
        removal.why = reason(errno, errno == EACCES ? "the directory may not be read" : "");
        removal._where = shown;
        return false;
    }
    if (names->empty())
    {
        return true;
    }
    const std::string whyNot = whyNotChangeable(directory);
    for (auto name = names->begin(); name != names->end(); ++name)
    {
        const Found entry = entryAt(pathIn(directory.path, *name));
        if (!entry.entry && meansAbsence(entry.error))
        {
            continue;
        }
        if (!removeOneIn(directory, whyNot, entry, shown, removal))
        {
            std::for_each(names->begin(), name,
                          [&](const std::string& before) { _gone.insert(pathIn(directory.path, before)); });
            return false;
        }
    }
    return true;
}

/// One of several, of a directory that is to go itself.
bool SimulatedDisk::removeOneIn(const Found& directory, const std::string& whyNot, const Found& entry,
                                const std::string& directoryShown, Removal& removal)
{
    const std::string shown = pathIn(directoryShown, lastNameOf(entry.path));
    if (!entry.entry)
    {
        removal.why = reason(entry.error);
        removal._where = shown;
        return false;
    }
    const bool isNew = _made.contains(entry.path);
    if (!removeOne(directory, whyNot, entry, shown, removal))
    {
        return false;
    }
    if (!isNew)
    {
        add(*entry.entry, shown, removal.contents);
    }
    return true;
}

/// New directories come last: where the disk will list them isn't known, and one that remains does no harm.
std::optional<std::vector<std::string>> SimulatedDisk::namesIn(const Found& directory) const
{
    std::vector<std::string> names;
    if (!_made.contains(directory.path))
    {
        auto onDiskNow = zolhost::namesIn(onDisk(directory.path));
        if (!onDiskNow)
        {
            return std::nullopt;
        }
        names = std::move(*onDiskNow);
        if (!_gone.empty())
        {
            // with the lambda's own type clang would put this file's whole path into what is installed
            const std::function<bool(const std::string&)> isGone = [&](const std::string& name) {
                return _gone.contains(pathIn(directory.path, name));
            };
            std::erase_if(names, isGone);
        }
    }
    const std::string prefix = directory.path + '/';
    for (auto made = _made.lower_bound(prefix); made != _made.end() && made->first.starts_with(prefix);
         ++made)
    {
        if (made->first.find('/', prefix.size()) == std::string::npos)
        {
            names.push_back(made->first.substr(prefix.size()));
        }
    }
    return names;
}

std::vector<Preview::Made> SimulatedDisk::made() const
{
    // a link on the way may have been removed
    const auto named = [&](const std::string& shown, const std::string& path) {
        return leadsSomewhere(shown) ? shown : path;
    };
    std::vector<Preview::Made> made;
    for (const auto& [path, directory] : _made)
    {
        made.push_back({named(directory.shown, path), directory.entry.mode, false});
    }
    for (const auto& [path, changed] : _modes)
    {
        if (changed.before != changed.after)
        {
            made.push_back({named(changed.shown, path), changed.after, true});
        }
    }
    std::ranges::sort(made, {}, &Preview::Made::path);
    return made;
}

std::vector<Preview::Removed> SimulatedDisk::removed() const
{
    auto removed = _removed;
    std::ranges::sort(removed, {}, &Preview::Removed::path);
    return removed;
}

} // namespace zolhost
