#include "FileMTransaction.h"

#include "file_management/mo_impl/ProcessState.h"
#include "file_management/mo_impl/Worker.h"
#include "plain/PlainTransaction.h"
#include "plain/WalkTree.h"
#include "support/ChildProcess.h"
#include "support/DistinguishedNames.h"
#include "support/MemoryFolder.h"
#include "support/OrdinaryUser.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"
#include "support/WorkingDirectory.h"

#include <algorithm>
#include <climits>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace zoltest
{

namespace
{

using ZolFileManagement::FileMTransaction;
using Texts = std::vector<std::string>;

struct Request
{
    enum class Kind
    {
        Create,
        Delete,
        Remove,
        RemoveFiles
    };
    Kind kind;
    std::string dn; ///< of the parent of what is created
    std::string name = {};
};

Texts answersOf(const std::vector<Request>& requests, const std::string& root, Worker& holder)
{
    FileMTransaction& worker = holder.transaction;
    Texts answers;
    for (const Request& request : requests)
    {
        const char* const dn = request.dn.c_str();
        ZolReturnT code = 0;
        switch (request.kind)
        {
        case Request::Kind::Create:
            code = worker.create(dn, "FileGroup", "fileGroupId", request.name.c_str());
            break;
        case Request::Kind::Delete:
            code = worker.deleteM(dn);
            break;
        case Request::Kind::Remove: {
            QenMoAttributeValueResult_3 result{};
            code = worker.action(dn, "remove", nullptr, result);
            result.releaseCallback(result.container);
            break;
        }
        case Request::Kind::RemoveFiles: {
            bool removed = false;
            worker.removeFileAction(plainPathOf(root, dn), request.name, removed);
            code = removed ? 1 : 0;
            break;
        }
        }
        answers.push_back(std::to_string(code));
    }
    answers.push_back("commit " + std::to_string(worker.commit()));
    return answers;
}

Texts answersOf(const std::vector<Request>& requests, const std::string& root, PlainTransaction& plain)
{
    Texts answers;
    for (const Request& request : requests)
    {
        ZolReturnT code = 0;
        switch (request.kind)
        {
        case Request::Kind::Create:
            code = plain.create(request.dn, request.name);
            break;
        case Request::Kind::Delete:
            code = plain.deleteM(request.dn);
            break;
        case Request::Kind::Remove:
            code = plain.remove(request.dn);
            break;
        case Request::Kind::RemoveFiles:
            code = plain.removeFiles(plainPathOf(root, request.dn), request.name) ? 1 : 0;
            break;
        }
        answers.push_back(std::to_string(code));
    }
    answers.push_back("commit " + std::to_string(plain.commit()));
    return answers;
}

/// All below the directory with kinds, modes, sizes and targets. Whoever owns it gets the right to look.
void describe(const std::string& directory, Texts& lines, std::size_t prefix)
{
    ::chmod(directory.c_str(), 0700);
    for (const auto& entry : std::filesystem::directory_iterator(directory))
    {
        const std::string path = entry.path().string();
        struct stat status
        {};
        ::lstat(path.c_str(), &status);
        const bool isLink = S_ISLNK(status.st_mode);
        lines.push_back(path.substr(prefix) + " " + std::to_string(status.st_mode) +
                        (S_ISREG(status.st_mode) ? " " + std::to_string(status.st_size) : "") +
                        (isLink ? " -> " + std::filesystem::read_symlink(path).string() : ""));
        if (S_ISDIR(status.st_mode))
        {
            describe(path, lines, prefix);
        }
    }
}

/// Adds requests for a tree that stands where it says.
using Ask = void (*)(Random&, const WalkTree&, std::vector<Request>&);

/// What answered, what was logged and what is on disk then. The tree and the requests are the same for the
/// same seed.
template<class Transaction>
Texts outcomeOf(unsigned int seed, const TemporaryTree& place, Ask ask)
{
    Random random(seed);
    const std::string trunk = place.directory("trunk");
    const WalkTree tree(random, trunk, Loops::One);
    for (const std::string& directory : tree.directories)
    {
        struct stat status
        {};
        if (below(random, 4) == 0 && ::stat(directory.c_str(), &status) == 0)
        {
            ::chmod(directory.c_str(), (status.st_mode & 0777U) | S_ISGID);
        }
    }
    std::vector<Request> requests;
    ask(random, tree, requests);

    Texts outcome;
    {
        const WorkingDirectory here(trunk + "/here");
        Transaction transaction(tree.root);
        const RecordedLog log;
        outcome = answersOf(requests, tree.root, transaction);
        const Texts statements = log.statements();
        outcome.insert(outcome.end(), statements.begin(), statements.end());
    }
    Texts lines;
    describe(trunk, lines, trunk.size());
    std::sort(lines.begin(), lines.end());
    outcome.insert(outcome.end(), lines.begin(), lines.end());
    removeWalkTree(trunk);
    return outcome;
}

void tellFirstDifference(unsigned int seed, const Texts& plain, const Texts& ours)
{
    const auto [left, right] = std::mismatch(plain.begin(), plain.end(), ours.begin(), ours.end());
    std::cerr << "seed " << seed << "\n  plain: " << (left != plain.end() ? *left : "nothing more")
              << "\n  ours:  " << (right != ours.end() ? *right : "nothing more") << "\n";
}

/// Returns what differs. Lines of the outcomes that are looked for must turn up.
std::string compareChanges(const std::string& folder, unsigned int trees, Ask ask, const Texts& lookedFor)
{
    const Environment variable("TMPDIR", folder);
    const TemporaryTree place;
    place.chmod("", 0777);
    const ChildOutcome outcome = runInChild([&] {
        becomeOrdinaryUser();
        ::umask(027);
        Texts missing = lookedFor;
        int differing = 0;
        for (unsigned int seed = 1; seed <= trees; ++seed)
        {
            const Texts plain = outcomeOf<PlainTransaction>(seed, place, ask);
            const Texts ours = outcomeOf<Worker>(seed, place, ask);
            if (plain != ours && ++differing <= 3)
            {
                tellFirstDifference(seed, plain, ours);
            }
            std::erase_if(missing, [&](const std::string& text) {
                return std::any_of(plain.begin(), plain.end(), [&](const std::string& line) {
                    return line.find(text) != std::string::npos;
                });
            });
        }
        for (const std::string& text : missing)
        {
            std::cerr << "not once: " << text << "\n";
        }
        return 0;
    });
    return outcome.exitStatus == 0 ? outcome.standardError
                                   : "ended with " + std::to_string(outcome.exitStatus) + ", signal " +
                                         std::to_string(outcome.signal) + "\n" + outcome.standardError;
}

// What is asked.

/// For a path below the root; not for each of them there is a DN.
std::string dnOf(const std::string& root, const std::string& path, bool isFile)
{
    std::string dn = fileM;
    for (std::size_t begin = root.size() + 1; begin < path.size();)
    {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string value = path.substr(begin, end - begin);
        dn = isFile && end == path.size() ? fileInformation(value, dn) : fileGroup(value, dn);
        begin = end + 1;
    }
    return dn;
}

std::string anyNewName(Random& random)
{
    static const Texts names = {
        "new", "new-", "new.", "new!", "~", "c:", "x\\2By", "+", "n e w", ".n", "\xff"};
    return names[static_cast<std::size_t>(below(random, static_cast<int>(names.size())))];
}

void askForAChain(Random& random, const std::string& parentDn, std::vector<Request>& requests)
{
    std::string dn = parentDn;
    for (int levels = below(random, 4) == 0 ? below(random, 60) : below(random, 4); levels >= 0; --levels)
    {
        for (int siblings = below(random, 3); siblings > 0; --siblings)
        {
            requests.push_back({Request::Kind::Create, dn, anyNewName(random)});
        }
        const std::string name = anyNewName(random);
        if (below(random, 20) != 0) // otherwise it is missing
        {
            requests.push_back({Request::Kind::Create, dn, name});
        }
        dn = fileGroup(name, dn);
    }
}

void askForWhatIsThere(const std::string& path, const WalkTree& tree, std::vector<Request>& requests)
{
    const std::size_t slash = path.rfind('/');
    const std::string name = path.substr(slash + 1);
    const bool isAllowed =
        name.find('|') == std::string::npos && name.find_first_not_of('.') != std::string::npos;
    if (isAllowed && path != tree.root)
    {
        requests.push_back({Request::Kind::Create, dnOf(tree.root, path.substr(0, slash), false), name});
    }
}

void askAny(Random& random, const WalkTree& tree, std::vector<Request>& requests)
{
    Texts groups = tree.directories;
    groups.insert(groups.end(), tree.others.begin(), tree.others.end()); // links among them
    groups.push_back(tree.root + "/missing");
    for (int i = 0; i < 12; ++i)
    {
        const std::string& path =
            groups[static_cast<std::size_t>(below(random, static_cast<int>(groups.size())))];
        const std::string dn = dnOf(tree.root, path, false);
        switch (below(random, 8))
        {
        case 0:
            askForWhatIsThere(path, tree, requests);
            break;
        case 1:
            requests.push_back({Request::Kind::RemoveFiles, dn, "^.*$"});
            break;
        case 2:
            requests.push_back({Request::Kind::Delete, dn});
            break;
        case 3:
            if (path != tree.root)
            {
                requests.push_back({Request::Kind::Remove, dnOf(tree.root, path, below(random, 4) == 0)});
            }
            break;
        case 4:
            requests.push_back({Request::Kind::Delete, dnOf(tree.root, path, true)});
            break;
        default:
            askForAChain(random, below(random, 8) == 0 ? dnOf(tree.root, path, true) : dn, requests);
        }
    }
}

/// Chains of long names whose last ones are around the longest path that the system takes.
void askForLongPaths(Random& random, const WalkTree& tree, std::vector<Request>& requests)
{
    for (int chain = 0; chain < 3; ++chain)
    {
        std::string dn = fileM;
        std::size_t size = tree.root.size() + 1;
        const std::size_t target = static_cast<std::size_t>(PATH_MAX - 4 + below(random, 8));
        while (size + 2 <= target)
        {
            const std::size_t rest = target - size - 1;
            const std::size_t length =
                rest <= 250 ? rest : std::min(rest - 2, static_cast<std::size_t>(50 + below(random, 200)));
            const std::string name(length, static_cast<char>('a' + chain));
            requests.push_back({Request::Kind::Create, dn, name});
            dn = fileGroup(name, dn);
            size += length + 1;
        }
    }
}

} // namespace

TEST(ChangesAgainstPlain, AnswerLogAndLeaveTheSame)
{
    const Texts lookedFor = {"commit 0", "commit -1", "Unable to modify", "Child directory", "Not allowed"};
    EXPECT_EQ(compareChanges(memoryFolder(), 200, askAny, lookedFor), "");
    EXPECT_EQ(compareChanges("/tmp", 20, askAny, {}), "");
}

TEST(ChangesAgainstPlain, AnswerLogAndLeaveTheSameWherePathsAreTooLong)
{
    EXPECT_EQ(
        compareChanges(memoryFolder(), 40, askForLongPaths, {"commit 0", "commit -1", "Unable to modify"}),
        "");
}

TEST(ChangesAgainstPlain, DnLeadsToTheSamePath)
{
    const Texts parts = {"FileGroup=", ",FileGroup=", ",FileInformation=",
                         ",Other=",    ",",           "=",
                         "a",          "..",          ".",
                         "/",          "\\2B",        "b",
                         "c:",         "~",           "FileGroup",
                         ",FileM=1",   "\\",          "+",
                         "?",          ".x",          "FileInformation"};
    const Texts roots = {"/fs", "/", "", "/fs/", "/a/../b/./c//", "relative/root", "..", ".", "/~/c:"};
    for (unsigned int seed = 1; seed <= 20000 && !testing::Test::HasFailure(); ++seed)
    {
        Random random(seed);
        const auto anyOf = [&](const Texts& texts) {
            return texts[static_cast<std::size_t>(below(random, static_cast<int>(texts.size())))];
        };
        const std::string root = anyOf(roots);
        std::string dn = below(random, 2) == 0 ? fileM : "";
        for (int count = below(random, 12); count > 0; --count)
        {
            dn += anyOf(parts);
        }
        Worker worker(root);
        const Poco::Path plain = plainPathOf(root, dn);
        const Poco::Path ours = worker.transaction.convertDnToPath(dn.c_str());
        EXPECT_EQ(ours.toString(), plain.toString()) << root << " " << dn;
        EXPECT_EQ(ours.isDirectory(), plain.isDirectory()) << root << " " << dn;
        EXPECT_EQ(ours.depth(), plain.depth()) << root << " " << dn;
        EXPECT_EQ(worker.transaction.convertDnToText(dn.c_str()), plain.toString()) << root << " " << dn;
    }
}

} // namespace zoltest
