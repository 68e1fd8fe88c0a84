#include "ManyChanges.h"

#include "support/DistinguishedNames.h"

#include <algorithm>
#include <map>
#include <sstream>

namespace faults
{

namespace
{

constexpr int FILES = 60;
constexpr int PARENTS = 10;
constexpr int TREES = 40;

std::string numbered(const std::string& name, int number)
{
    return name + (number < 10 ? "0" : "") + std::to_string(number);
}

bool hasFiles(int tree)
{
    return tree % 2 != 0;
}

std::string dnOf(const std::string& path)
{
    std::string dn = zoltest::fileM;
    std::istringstream names(path);
    for (std::string name; std::getline(names, name, '/');)
    {
        dn = zoltest::fileGroup(name, dn);
    }
    return dn;
}

std::string parentOf(const std::string& path)
{
    return path.substr(0, path.rfind('/'));
}

std::string leafOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

using Entries = std::map<std::string, std::string>; ///< what is told of each name

Entries entriesOf(const Texts& snapshot)
{
    Entries entries;
    for (const std::string& line : snapshot)
    {
        const std::size_t space = line.rfind(' ');
        entries[line.substr(space + 1)] = line.substr(0, space);
    }
    return entries;
}

/// How far a pass has come.
struct Progress
{
    std::size_t done = 0;
    std::string inFlight; ///< empty if it is between two changes
};

/// Those that are done must be the first ones; at most the next one is in flight.
template<class State>
std::string follow(const Texts& changes, State stateOf, Progress& progress)
{
    while (progress.done < changes.size() && stateOf(changes[progress.done]) == "done")
    {
        ++progress.done;
    }
    std::size_t next = progress.done;
    if (next < changes.size() && stateOf(changes[next]) == "begun")
    {
        progress.inFlight = changes[next++];
    }
    for (; next < changes.size(); ++next)
    {
        if (const std::string state = stateOf(changes[next]); state != "open")
        {
            return changes[next] + " is " + state + ", but " + changes[progress.done] + " is not\n";
        }
    }
    return {};
}

} // namespace

ManyChanges::ManyChanges()
{
    for (int number = 0; number < FILES; ++number)
    {
        _files.push_back(numbered("files/f", number));
    }
    for (int number = 0; number < PARENTS; ++number)
    {
        const std::string parent = numbered("p", number);
        for (const std::string name :
             {"/n0", "/n0/m", "/n0/m/k", "/n1", "/n1/m", "/n1/m/k", "/n2", "/n2/m", "/n3", "/n3/m"})
        {
            _directories.push_back(parent + name);
        }
    }
    for (int number = 0; number < TREES; ++number)
    {
        _trees.push_back(numbered("t", number));
    }
}

void ManyChanges::build(const Surroundings& surroundings) const
{
    surroundings.clear();
    const auto& tree = surroundings.tree;
    for (const std::string& file : _files)
    {
        tree.file(file, "1234");
        tree.file(file + ".stays", "12");
    }
    for (int number = 0; number < PARENTS; ++number)
    {
        const std::string parent = tree.directory(numbered("p", number));
        tree.directory(numbered("p", number) + "/stays");
        tree.chmod(numbered("p", number), number % 2 == 0 ? 0755 : 02755);
    }
    for (int number = 0; number < TREES; ++number)
    {
        tree.directory(_trees[static_cast<std::size_t>(number)] + "/a/b");
        if (hasFiles(number))
        {
            tree.file(_trees[static_cast<std::size_t>(number)] + "/a/g", "1");
            tree.link(_trees[static_cast<std::size_t>(number)] + "/l", tree.path("files"));
        }
    }
    tree.link("link", tree.path("files"));
}

std::string ManyChanges::request(zoltest::Transaction& transaction) const
{
    std::string problems;
    const auto expect = [&problems](bool holds, const std::string& what) {
        problems += holds ? "" : "request for " + what + " is refused\n";
    };
    const auto deleted = [&](const std::string& dn) {
        const ZolReturnT code = transaction.deleteMo(dn);
        return code == 0 || code == -2;
    };
    for (const std::string& file : _files)
    {
        expect(deleted(zoltest::fileInformation(leafOf(file), dnOf(parentOf(file)))), file);
    }
    for (const std::string& directory : _directories)
    {
        expect(transaction.create(dnOf(parentOf(directory)), leafOf(directory)) == 0, directory);
    }
    for (int number = 0; number < TREES; ++number)
    {
        const std::string& tree = _trees[static_cast<std::size_t>(number)];
        expect(hasFiles(number) ? transaction.remove(dnOf(tree)) == "bool[true]" : deleted(dnOf(tree)), tree);
    }
    return problems;
}

std::string ManyChanges::judge(const Texts& before, const Texts& after) const
{
    const Entries was = entriesOf(before);
    Entries is = entriesOf(after);
    std::string problems;

    Progress files;
    problems += follow(
        _files, [&](const std::string& file) { return is.contains(file) ? "open" : "done"; }, files);
    const auto modeOf = [](const std::string& directory) {
        return (directory[2] - '0') % 2 == 0 ? std::string("d 0770") : std::string("d 2770");
    };
    Progress directories;
    problems += follow(
        _directories,
        [&](const std::string& directory) {
            return !is.contains(directory) ? "open" : is[directory] == modeOf(directory) ? "done" : "begun";
        },
        directories);
    // Begun is a tree with its top still there and parts of it gone.
    const auto partsIn = [](const Entries& entries, const std::string& tree) {
        // "0" comes behind "/"
        return std::distance(entries.lower_bound(tree + "/"), entries.lower_bound(tree + "0"));
    };
    Progress trees;
    problems += follow(
        _trees,
        [&](const std::string& tree) {
            return !is.contains(tree)                       ? (partsIn(is, tree) == 0 ? "done" : "torn")
                   : partsIn(is, tree) < partsIn(was, tree) ? "begun"
                                                            : "open";
        },
        trees);

    const bool areFilesDone = files.done == _files.size();
    const bool areDirectoriesDone = directories.done == _directories.size();
    if (!areFilesDone && (directories.done > 0 || !directories.inFlight.empty()))
    {
        problems += "directories are made before all files are gone\n";
    }
    if (!areDirectoriesDone && (trees.done > 0 || !trees.inFlight.empty()))
    {
        problems += "trees go before all directories are made\n";
    }
    // a directory in flight has what the mask of the process leaves, and the bit of its parent
    if (!directories.inFlight.empty() && is[directories.inFlight] != "d 0755" &&
        is[directories.inFlight] != "d 2755")
    {
        problems += directories.inFlight + " has the mode " + is[directories.inFlight] + "\n";
    }

    // Nothing else may have changed.
    for (const auto& [name, what] : was)
    {
        const auto inTree = [&name = name](const std::string& tree) {
            return name == tree || name.starts_with(tree + "/");
        };
        const bool mayGo = std::find(_files.begin(), _files.end(), name) != _files.end() ||
                           std::any_of(_trees.begin(), _trees.end(), inTree);
        const auto found = is.find(name);
        if (found == is.end() ? !mayGo : found->second != what)
        {
            problems += name + (found == is.end() ? " is gone\n" : " is now " + found->second + "\n");
        }
    }
    for (const auto& [name, what] : is)
    {
        if (!was.contains(name) &&
            std::find(_directories.begin(), _directories.end(), name) == _directories.end())
        {
            problems += name + " is new\n";
        }
    }
    return problems;
}

} // namespace faults
