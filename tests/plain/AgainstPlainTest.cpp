#include "FileGroupIterator.h"
#include "LiteralPath.h"

#include "file_management/mo_impl/ProcessState.h"
#include "file_management/mo_impl/Worker.h"
#include "plain/PlainNames.h"
#include "plain/PlainReads.h"
#include "plain/PlainWalk.h"
#include "plain/WalkTree.h"
#include "support/AttributeText.h"
#include "support/ChildProcess.h"
#include "support/DistinguishedNames.h"
#include "support/MemoryFolder.h"
#include "support/OrdinaryUser.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"
#include "support/WorkingDirectory.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

namespace zoltest
{

namespace
{

using ZolFileManagement::FileGroupIterator;
using ZolFileManagement::FileInfo;
using ZolFileManagement::FileMTransaction;
using ZolFileManagement::literalPath;
using ZolFileManagement::NonComittedData;
using Texts = std::vector<std::string>;

void append(Texts& lines, const Texts& more)
{
    lines.insert(lines.end(), more.begin(), more.end());
}

/// What is answered, and what is logged meanwhile.
Texts told(const std::function<Texts()>& act)
{
    const RecordedLog log;
    Texts lines = act();
    append(lines, log.statements());
    return lines;
}

Texts answered(const std::string& text)
{
    return {text};
}

/// Each step with what it logs, until the end has come twice.
template<class Open, class Step>
Texts steps(Open open, Step step)
{
    RecordedLog log;
    auto walk = open();
    Texts lines = log.statements();
    for (int ends = 0; ends < 2;)
    {
        log.clear();
        const std::string line = step(walk);
        ends += line.starts_with("end") ? 1 : 0;
        lines.push_back(line);
        append(lines, log.statements());
    }
    return lines;
}

template<class Walk>
std::string pathOfNext(Walk& walk)
{
    Poco::Path entry("untouched");
    const bool isMore = walk.getNext(entry);
    return (isMore ? "" : "end ") + entry.toString();
}

std::string nameOf(Poco::Path path)
{
    return path.makeFile().getFileName();
}

/// Tells how the answers differ, if they do.
class Differences
{
public:
    void add(const std::string& what, const Texts& plain, const Texts& ours)
    {
        ++_compared;
        if (plain == ours || _told == 3)
        {
            return;
        }
        ++_told;
        std::cerr << what << "\n  plain:";
        print(plain);
        std::cerr << "\n  ours:";
        print(ours);
        std::cerr << "\n";
    }

    int compared() const { return _compared; }

private:
    static void print(const Texts& lines)
    {
        for (const std::string& line : lines)
        {
            std::cerr << "\n    " << line;
        }
    }

    int _compared = 0;
    int _told = 0;
};

// Walks by themselves.

void fillAnyChanges(Random& random, const WalkTree& tree, PlainChanges& changes)
{
    const auto addSome = [&](const Texts& paths) {
        for (const std::string& path : paths)
        {
            const std::string text = path + (below(random, 8) == 0 ? "" : "/");
            switch (below(random, 8))
            {
            case 0:
                changes.deletedDirs.insert(literalPath(text));
                break;
            case 1:
                changes.deletedFiles.insert(literalPath(path));
                break;
            case 2:
                changes.createdDirs.insert(literalPath(path + "/"));
                break;
            case 3:
                changes.createdDirs.insert(literalPath(path + "/new/"));
                changes.createdDirs.insert(literalPath(path + "/new/inner/"));
                changes.createdDirs.insert(literalPath(path + "/new!/"));
                break;
            default:
                break;
            }
        }
    };
    if (below(random, 3) != 0)
    {
        addSome(tree.directories);
        addSome(tree.others);
    }
}

NonComittedData sameChanges(const PlainChanges& changes)
{
    NonComittedData same;
    for (const Poco::Path& path : changes.createdDirs)
    {
        same._createdDirs.insert(path);
    }
    for (const Poco::Path& path : changes.deletedDirs)
    {
        same._deletedDirs.insert(path);
    }
    for (const Poco::Path& path : changes.deletedFiles)
    {
        same._deletedFiles.insert(path);
    }
    return same;
}

void compareWalks(Random& random, const WalkTree& tree, Differences& differences)
{
    PlainChanges plainChanges;
    fillAnyChanges(random, tree, plainChanges);
    const NonComittedData changes = sameChanges(plainChanges);

    Texts places = tree.directories;
    append(places, tree.others);
    append(places, {tree.root + "/missing", tree.root + "/missing/below", tree.root + "/.",
                    tree.directories.back() + "/.", tree.directories.back() + "/.."});
    for (const std::string& place : places)
    {
        const Poco::Path directory = literalPath(place + (below(random, 8) == 0 ? "" : "/"));
        for (const bool isOfFiles : {true, false})
        {
            const auto openPlain = [&] { return PlainWalk(directory, plainChanges, isOfFiles); };
            const Texts plain = steps(openPlain, [](PlainWalk& walk) {
                const std::string path = pathOfNext(walk);
                return path + (walk.lastIsFile() ? ", a file" : "");
            });
            const Texts plainNames = steps(openPlain, [](PlainWalk& walk) {
                Poco::Path entry;
                return walk.getNext(entry) ? nameOf(entry) : "end";
            });
            for (const auto span : {FileGroupIterator::Span::SeveralCalls, FileGroupIterator::Span::OneCall})
            {
                const std::string what = std::string(isOfFiles ? "files of " : "directories of ") +
                                         directory.toString() +
                                         (span == FileGroupIterator::Span::OneCall ? ", in one call" : "");
                const auto open = [&] { return FileGroupIterator(directory, changes, isOfFiles, span); };
                differences.add(what, plain, steps(open, [](FileGroupIterator& walk) {
                                    const std::string path = pathOfNext(walk);
                                    return path + (walk._lastIsFile ? ", a file" : "");
                                }));
                differences.add("names of " + what, plainNames, steps(open, [](FileGroupIterator& walk) {
                                    std::string name;
                                    return walk.getNext(name) ? name : "end";
                                }));
            }
        }
    }
}

// Operations of a transaction.

/// The DN that stands for a path below the root, or an empty text if none does.
std::string dnOf(FileMTransaction& worker, const WalkTree& tree, const std::string& path, bool isFile)
{
    std::string dn = fileM;
    for (std::size_t begin = tree.root.size() + 1; begin < path.size();)
    {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        std::string value = path.substr(begin, end - begin);
        if (isFile && end == path.size())
        {
            dn = fileInformation(value, dn);
        }
        else
        {
            for (std::size_t plus = value.find('+'); plus != std::string::npos; plus = value.find('+', plus))
            {
                value.replace(plus, 1, "\\2B");
            }
            dn = fileGroup(value, dn);
        }
        begin = end + 1;
    }
    const std::string text = path + (isFile ? "" : "/");
    return worker.convertDnToPath(dn.c_str()).toString() == text ? dn : "";
}

void changeAny(Random& random, const WalkTree& tree, FileMTransaction& worker, PlainChanges& changes)
{
    if (below(random, 3) == 0)
    {
        return;
    }
    for (const std::string& path : tree.directories)
    {
        const std::string dn = dnOf(worker, tree, path, false);
        if (dn.empty() || path == tree.root)
        {
            continue;
        }
        if (below(random, 4) == 0 && worker.create(dn.c_str(), "FileGroup", "fileGroupId", "new") == 0)
        {
            changes.addCreatedDir(literalPath(path + "/new/"));
        }
        if (below(random, 6) == 0)
        {
            QenMoAttributeValueResult_3 result{};
            if (worker.action(dn.c_str(), "remove", nullptr, result) == 0)
            {
                changes.addDeletedDir(literalPath(path + "/"));
            }
            result.releaseCallback(result.container);
        }
    }
    for (const std::string& path : tree.others)
    {
        const std::string dn = dnOf(worker, tree, path, true);
        if (!dn.empty() && dn.find("?\?") == std::string::npos && below(random, 4) == 0 &&
            worker.deleteM(dn.c_str()) == 0)
        {
            changes.deletedFiles.insert(literalPath(path));
        }
    }
}

Texts namesOf(FileMTransaction& worker, const std::string& dn, const char* className)
{
    unsigned long long iterator = 0;
    Texts names = {"code " + std::to_string(worker.newIterator(dn.c_str(), className, &iterator))};
    char* name = nullptr;
    while (worker.next(iterator, &name) == 0 && name != nullptr)
    {
        names.emplace_back(name);
    }
    return names;
}

Texts plainNamesOf(const Poco::Path& directory, const PlainChanges& changes, bool isOfFiles)
{
    Texts names = {"code 0"};
    PlainWalk walk(directory, changes, isOfFiles);
    Poco::Path entry;
    while (walk.getNext(entry))
    {
        std::string name = nameOf(entry);
        (walk.lastIsFile() ? plainAlignFile : plainAlignGroup)(name);
        names.push_back(name);
    }
    return names;
}

Texts filesText(const std::function<std::vector<FileInfo>()>& read)
{
    try
    {
        Texts lines;
        for (const FileInfo& file : read())
        {
            lines.push_back(file.fileName + " " + std::to_string(file.size) + " " + file.fileType + " " +
                            file.modificationTime);
        }
        return lines;
    }
    catch (const std::exception& failure)
    {
        return {failure.what()};
    }
}

void compareDirectory(FileMTransaction& worker, const std::string& dn, const PlainChanges& changes,
                      Differences& differences)
{
    const Poco::Path path = worker.convertDnToPath(dn.c_str());
    for (const bool isOfFiles : {true, false})
    {
        const char* const className = isOfFiles ? "FileInformation" : "FileGroup";
        differences.add("names of " + path.toString() + " " + className,
                        told([&] { return plainNamesOf(path, changes, isOfFiles); }),
                        told([&] { return namesOf(worker, dn, className); }));
        differences.add("count of " + path.toString() + " " + className,
                        told([&] { return answered(std::to_string(plainCount(path, changes, isOfFiles))); }),
                        told([&] {
                            unsigned long long count = 0;
                            worker.countMoChildren(dn.c_str(), className, &count);
                            return answered(std::to_string(count));
                        }));
    }
    differences.add("files of " + path.toString(),
                    told([&] { return filesText([&] { return plainFiles(path, changes); }); }), told([&] {
                        return filesText([&] {
                            std::vector<FileInfo> files;
                            worker.getFileGroupFiles(dn.c_str(), files);
                            return files;
                        });
                    }));
    differences.add("whether there are files in " + path.toString(),
                    told([&] { return answered(plainContainsFiles(path, changes) ? "yes" : "no"); }),
                    told([&] { return answered(worker.isDirContainingFiles(path) ? "yes" : "no"); }));
}

void compareEntry(FileMTransaction& worker, const std::string& dn, bool isGroup, const PlainChanges& changes,
                  Differences& differences)
{
    const Poco::Path path = worker.convertDnToPath(dn.c_str());
    if (worker.checkDn(dn.c_str()))
    {
        differences.add("existence of " + path.toString(),
                        told([&] { return answered(plainExists(path, isGroup, changes) ? "yes" : "no"); }),
                        told([&] { return answered(worker.existsMo(dn.c_str()) ? "yes" : "no"); }));
    }
    std::string plainDn = dn;
    std::string ourDn = dn;
    const bool isFoundPlainly = plainNameSearch(
        plainDn, [&](const std::string& each) { return worker.convertDnToPath(each.c_str()); });
    const bool isFound = worker.replace3gppIllegalChars(ourDn);
    differences.add("search for " + dn, {isFoundPlainly ? "found" : "not found", plainDn},
                    {isFound ? "found" : "not found", ourDn});
    if (isGroup || Poco::Path(path).getFileName().starts_with(".filemno"))
    {
        return;
    }
    const auto attribute = [&](const char* name) {
        QenMoAttributeValueResult_3 result{};
        const ZolReturnT code = worker.getAttribute(dn.c_str(), name, result);
        const std::string text = code == 0 ? toText(result.container) : "code " + std::to_string(code);
        if (result.releaseCallback != nullptr)
        {
            result.releaseCallback(result.container);
        }
        return answered(text);
    };
    const Poco::Path found = worker.convertDnToPath(plainDn.c_str());
    const Poco::Path& read = Poco::File(path).exists() ? path : found;
    differences.add("size of " + path.toString(), answered("int[" + std::to_string(plainSize(read)) + "]"),
                    attribute("size"));
    differences.add("time of " + path.toString(), answered("string[\"" + plainDate(read) + "\"]"),
                    attribute("modificationTime"));
}

void compareRemoval(Random& random, FileMTransaction& worker, const std::string& dn, PlainChanges& changes,
                    Differences& differences)
{
    static const Texts expressions = {"^.*$", "^e.*$", "^.*[0-4]$", "^[^e].*$"};
    const std::string& expression = expressions[static_cast<std::size_t>(below(random, 4))];
    const Poco::Path path = worker.convertDnToPath(dn.c_str());
    differences.add(
        "removal from " + path.toString(),
        told([&] { return answered(plainRemoveFiles(path, expression, changes) ? "yes" : "no"); }), told([&] {
            bool removed = false;
            worker.removeFileAction(path, expression, removed);
            return answered(removed ? "yes" : "no");
        }));
    differences.add("what a removal leaves of " + path.toString(),
                    told([&] { return plainNamesOf(path, changes, true); }),
                    told([&] { return namesOf(worker, dn, "FileInformation"); }));
}

void compareOperations(Random& random, const WalkTree& tree, Differences& differences)
{
    Worker holder(tree.root);
    FileMTransaction& worker = holder.transaction;
    PlainChanges changes;
    changeAny(random, tree, worker, changes);

    Texts groups = tree.directories;
    append(groups, tree.others); // links among them
    groups.push_back(tree.root + "/missing");
    for (const std::string& path : groups)
    {
        if (const std::string dn = dnOf(worker, tree, path, false); !dn.empty())
        {
            compareDirectory(worker, dn, changes, differences);
            if (path != tree.root) // which is no object of that class
            {
                compareEntry(worker, dn, true, changes, differences);
            }
        }
        if (const std::string dn = dnOf(worker, tree, path, true); !dn.empty() && path != tree.root)
        {
            compareEntry(worker, dn, false, changes, differences);
        }
    }
    for (const std::string& path : tree.directories)
    {
        if (const std::string dn = dnOf(worker, tree, path, false); !dn.empty() && below(random, 2) == 0)
        {
            compareRemoval(random, worker, dn, changes, differences);
        }
    }
}

using Compare = void (*)(Random&, const WalkTree&, Differences&);

/// On the same trees each time. Returns what differs.
std::string compareOnTrees(const std::string& folder, unsigned int trees, Loops loops, Compare compare)
{
    const Environment variable("TMPDIR", folder);
    const TemporaryTree place;
    place.chmod("", 0777);
    const ChildOutcome outcome = runInChild([&] {
        becomeOrdinaryUser();
        Differences differences;
        for (unsigned int seed = 1; seed <= trees; ++seed)
        {
            Random random(seed);
            const std::string trunk = place.directory("trunk");
            const WalkTree tree(random, trunk, loops);
            {
                const WorkingDirectory here(trunk + "/here");
                compare(random, tree, differences);
            }
            removeWalkTree(trunk);
        }
        return differences.compared() >= static_cast<int>(trees) * 20 ? 0 : 1;
    });
    return outcome.exitStatus == 0 ? outcome.standardError
                                   : "ended with " + std::to_string(outcome.exitStatus) + ", signal " +
                                         std::to_string(outcome.signal) + "\n" + outcome.standardError;
}

} // namespace

// The trees lie in memory and on a disk, which tell their entries in another order.

TEST(AgainstPlain, WalksGiveAndLogTheSameStepByStep)
{
    EXPECT_EQ(compareOnTrees(memoryFolder(), 200, Loops::Any, compareWalks), "");
    EXPECT_EQ(compareOnTrees("/tmp", 30, Loops::Any, compareWalks), "");
}

TEST(AgainstPlain, OperationsAnswerAndLogTheSame)
{
    EXPECT_EQ(compareOnTrees(memoryFolder(), 200, Loops::One, compareOperations), "");
    EXPECT_EQ(compareOnTrees("/tmp", 30, Loops::One, compareOperations), "");
}

} // namespace zoltest
