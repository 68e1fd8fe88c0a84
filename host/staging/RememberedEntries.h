#pragma once

#include "staging/DiskEntry.h"
#include "staging/Progress.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace zolhost
{

enum class DiskChange
{
    Appeared,
    Vanished,
    Changed, ///< its content, its mode or its owner
    Replaced ///< by another entry of the same name
};

/// An entry of the disk as it once was, in little more memory than its name takes.
class RememberedEntries
{
public:
    RememberedEntries() = default;
    /// The entry, which must be there, with all that is in it.
    static RememberedEntries allAt(const std::string& path, ProgressCounter& progress);
    static RememberedEntries oneAt(const std::string& path);

    using Visit = std::function<void(const std::string& path, DiskChange change)>;
    /// How it differs now. Of a directory that appeared, vanished or was replaced, nothing that is in it is
    /// told.
    void eachChange(const std::string& path, ProgressCounter& progress, const Visit& visit) const;

private:
    struct Record
    {
        std::uint64_t identity;
        std::uint64_t state;
        std::uint32_t name;           // where it begins in _names
        std::uint32_t firstChild = 0; // those of a directory stand together, sorted
        std::uint32_t children = 0;
    };

    static Record recordOf(const DiskEntry& entry, std::size_t name);
    void addAllIn(std::size_t directory, const std::string& path, ProgressCounter& progress);
    void compare(const Record& record, const std::string& path, ProgressCounter& progress,
                 const Visit& visit) const;
    void compareAllIn(const Record& directory, const std::string& path, ProgressCounter& progress,
                      const Visit& visit) const;

    std::vector<Record> _records; // the entry itself comes first
    std::string _names;           // each ends in a zero byte
    bool _isDeep = false;
};

} // namespace zolhost
