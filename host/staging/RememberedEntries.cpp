#include "staging/RememberedEntries.h"

#include <algorithm>
#include <initializer_list>

namespace zolhost
{

namespace
{

/// So that two lists give the same number by chance alone.
std::uint64_t mixed(std::initializer_list<std::uint64_t> values)
{
    std::uint64_t mix = 0;
    for (const std::uint64_t value : values)
    {
        mix += value + 0x9e3779b97f4a7c15U;
        mix = (mix ^ (mix >> 30U)) * 0xbf58476d1ce4e5b9U;
        mix = (mix ^ (mix >> 27U)) * 0x94d049bb133111ebU;
        mix ^= mix >> 31U;
    }
    return mix;
}

std::vector<std::string> sortedNamesIn(const std::string& directory)
{
    auto names = namesIn(directory).value_or(std::vector<std::string>{});
    std::ranges::sort(names);
    return names;
}

} // namespace

RememberedEntries RememberedEntries::oneAt(const std::string& path)
{
    RememberedEntries remembered;
    remembered._names.push_back('\0');
    if (const auto entry = lookUp(path))
    {
        remembered._records.push_back(recordOf(*entry, 0));
    }
    return remembered;
}

RememberedEntries RememberedEntries::allAt(const std::string& path, ProgressCounter& progress)
{
    RememberedEntries remembered = oneAt(path);
    remembered._isDeep = true;
    progress.count();
    if (const auto entry = lookUp(path); entry && entry->kind == EntryKind::Directory)
    {
        remembered.addAllIn(0, path, progress);
    }
    remembered._records.shrink_to_fit();
    remembered._names.shrink_to_fit();
    return remembered;
}

RememberedEntries::Record RememberedEntries::recordOf(const DiskEntry& entry, std::size_t name)
{
    // the size and time of a directory tell no more than what appears and vanishes in it
    const bool isDirectory = entry.kind == EntryKind::Directory;
    const std::uint64_t bytes = isDirectory ? 0 : entry.bytes;
    const auto modified = isDirectory ? 0 : static_cast<std::uint64_t>(entry.modified);
    return {mixed({static_cast<std::uint64_t>(entry.kind), entry.device, entry.number,
                   static_cast<std::uint64_t>(entry.born)}),
            mixed({entry.mode, entry.owner, entry.group, bytes, modified}), static_cast<std::uint32_t>(name)};
}

void RememberedEntries::addAllIn(std::size_t directory, const std::string& path, ProgressCounter& progress)
{
    std::vector<std::string> directories;
    std::vector<std::size_t> indices;
    const std::size_t first = _records.size();
    for (const auto& name : sortedNamesIn(path))
    {
        progress.count();
        const auto entry = lookUp(pathIn(path, name));
        if (!entry)
        {
            continue;
        }
        if (entry->kind == EntryKind::Directory)
        {
            directories.push_back(name);
            indices.push_back(_records.size());
        }
        _records.push_back(recordOf(*entry, _names.size()));
        _names.append(name).push_back('\0');
    }
    _records[directory].firstChild = static_cast<std::uint32_t>(first);
    _records[directory].children = static_cast<std::uint32_t>(_records.size() - first);
    for (std::size_t i = 0; i < directories.size(); ++i)
    {
        addAllIn(indices[i], pathIn(path, directories[i]), progress);
    }
}

void RememberedEntries::eachChange(const std::string& path, ProgressCounter& progress,
                                   const Visit& visit) const
{
    if (!_records.empty())
    {
        compare(_records.front(), path, progress, visit);
    }
}

void RememberedEntries::compare(const Record& record, const std::string& path, ProgressCounter& progress,
                                const Visit& visit) const
{
    progress.count();
    const auto entry = lookUp(path);
    if (!entry)
    {
        visit(path, DiskChange::Vanished);
        return;
    }
    const Record now = recordOf(*entry, 0);
    if (now.identity != record.identity)
    {
        visit(path, DiskChange::Replaced);
        return;
    }
    if (now.state != record.state)
    {
        visit(path, DiskChange::Changed);
    }
    if (_isDeep && entry->kind == EntryKind::Directory)
    {
        compareAllIn(record, path, progress, visit);
    }
}

void RememberedEntries::compareAllIn(const Record& directory, const std::string& path,
                                     ProgressCounter& progress, const Visit& visit) const
{
    const auto names = sortedNamesIn(path);
    auto name = names.begin();
    const auto appearedUpTo = [&](const auto& isBefore) {
        for (; name != names.end() && isBefore(*name); ++name)
        {
            visit(pathIn(path, *name), DiskChange::Appeared);
        }
    };
    for (std::uint32_t i = 0; i < directory.children; ++i)
    {
        const Record& record = _records[directory.firstChild + i];
        const char* const remembered = &_names[record.name];
        appearedUpTo([&](const std::string& other) { return other < remembered; });
        compare(record, pathIn(path, remembered), progress, visit);
        if (name != names.end() && *name == remembered)
        {
            ++name;
        }
    }
    appearedUpTo([](const std::string&) { return true; });
}

} // namespace zolhost
