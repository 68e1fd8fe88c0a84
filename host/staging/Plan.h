#pragma once

#include <set>
#include <string>
#include <vector>

namespace zolhost
{

/// What a transaction will do to the disk at its commit, as the host knows it from what the component
/// accepted. Paths are absolute; those of directories end in a slash, as a component tells the two apart by
/// that. Sets are in byte order, in which a component works them off.
class Plan
{
public:
    using Paths = std::set<std::string>;

    /// Two requests of one transaction that take each other back, so that nothing happens.
    struct Cancelled
    {
        enum class How
        {
            MadeThenRemoved,
            RemovedThenMade ///< the directory stays with its content and its mode
        };
        std::string path;
        How how;

        bool operator==(const Cancelled&) const = default;
    };

    void makeDirectory(const std::string& path);
    /// The directory and what was to be made below it: deleting an object.
    void removeDirectory(const std::string& path);
    /// This one path alone, be it of a directory or a file: the action `remove`. What was to be made below it
    /// is made and removed with it.
    void removeTree(const std::string& path);
    void removeFile(const std::string& path);
    void clear();

    bool isEmpty() const;
    const Paths& madeDirectories() const { return _madeDirectories; }
    const Paths& removedTrees() const { return _removedTrees; }
    const Paths& removedFiles() const { return _removedFiles; }
    const std::vector<Cancelled>& cancelled() const { return _cancelled; }

private:
    Paths _madeDirectories;
    Paths _removedTrees;
    Paths _removedFiles;
    std::vector<Cancelled> _cancelled; // in the order of the requests
};

} // namespace zolhost
