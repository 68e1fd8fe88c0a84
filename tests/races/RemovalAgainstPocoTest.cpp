#include "TreeRemoval.h"

#include "file_management/mo_impl/ProcessState.h"
#include "races/RandomTree.h"
#include "races/SystemCalls.h"
#include "support/ChildProcess.h"
#include "support/MemoryFolder.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryTree.h"

#include <Poco/Exception.h>
#include <Poco/File.h>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

using ZolFileManagement::removeTree;
using zoltest::contentOf;
using zoltest::RandomTree;
using zoltest::SystemCalls;
using zoltest::TemporaryTree;

namespace
{

bool pocoRemoves(const std::string& path)
{
    try
    {
        Poco::File(path).remove(true);
        return true;
    }
    catch (const Poco::Exception&)
    {
        return false;
    }
}

struct Outcome
{
    bool isGone;
    std::vector<std::string> after;
    std::vector<std::string> outside;

    bool operator==(const Outcome&) const = default;
};

/// In a folder that is of the same name each time, so that the same links lead to the same places.
template<class Remove>
Outcome outcomeFor(unsigned int seed, const std::string& folder, Remove remove)
{
    std::filesystem::create_directories(folder + "/outside/dir");
    Poco::File(folder + "/outside/keep").createFile();
    Poco::File(folder + "/outside/dir/keep").createFile();
    std::filesystem::create_directory(folder + "/place");
    Poco::File(folder + "/place/beside").createFile();
    RandomTree(seed).make(folder + "/place/top", folder + "/outside");
    Outcome outcome;
    outcome.isGone = remove(folder + "/place/top");
    outcome.after = contentOf(folder + "/place");
    outcome.outside = contentOf(folder + "/outside");
    std::filesystem::remove_all(folder);
    return outcome;
}

int attempts(const std::function<void(const std::string&)>& remove, const TemporaryTree& tree)
{
    int count = 0;
    tree.directory("busy");
    const SystemCalls calls([&](const SystemCalls::Call& call) {
        if (call.name == "rmdir")
        {
            tree.file("busy/" + std::to_string(++count));
        }
    });
    remove(tree.path("busy"));
    return count;
}

} // namespace

/// The trees lie in memory or on a disk, which tell their entries in another order.
struct Place
{
    const char* name;
    std::string folder;
    unsigned int trees;
};

std::ostream& operator<<(std::ostream& stream, const Place& place)
{
    return stream << place.folder;
}

class RemovalAgainstPocoOn : public testing::TestWithParam<Place>
{};

TEST_P(RemovalAgainstPocoOn, LeavesTheSameOfEveryRandomTree)
{
    const unsigned int trees = GetParam().trees;
    const int enough = static_cast<int>(trees / 10);
    const zoltest::Environment folder("TMPDIR", GetParam().folder);
    const TemporaryTree tree;
    tree.chmod("", 0777);
    const zoltest::ChildOutcome outcome = zoltest::runInChild([&] {
        zoltest::becomeOrdinaryUser();
        int removed = 0;
        int left = 0;
        for (unsigned int seed = 1; seed <= trees; ++seed)
        {
            const std::string place = tree.path("trees");
            const Outcome poco = outcomeFor(seed, place, pocoRemoves);
            const Outcome ours = outcomeFor(seed, place, removeTree);
            ++(poco.isGone ? removed : left);
            if (ours != poco)
            {
                std::cerr << "seed " << seed << " differs\n";
            }
        }
        if (removed < enough || left < enough)
        {
            std::cerr << removed << " trees removed and " << left << " left\n";
        }
        return 0;
    });
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_EQ(outcome.standardError, "");
}

INSTANTIATE_TEST_SUITE_P(Places, RemovalAgainstPocoOn,
                         testing::Values(Place{"Disk", "/tmp", 100},
                                         Place{"Memory", zoltest::memoryFolder(), 1000}),
                         [](const auto& place) { return place.param.name; });

TEST(RemovalAgainstPoco, StopsAtTheSameEntryOfADirectoryThatCannotBeEmptied)
{
    for (int stubborn = 0; stubborn < 20; ++stubborn)
    {
        const TemporaryTree tree;
        tree.chmod("", 0777);
        const zoltest::ChildOutcome outcome = zoltest::runInChild([&tree, stubborn] {
            zoltest::becomeOrdinaryUser();
            const auto outcomeOf = [&](const std::function<bool(const std::string&)>& remove) {
                for (int i = 0; i < 20; ++i)
                {
                    tree.file("top/" + std::to_string(i) + "/f");
                }
                tree.chmod("top/" + std::to_string(stubborn), 0500);
                const bool isGone = remove(tree.path("top"));
                const std::vector<std::string> after = contentOf(tree.path("top"));
                std::filesystem::remove_all(tree.path("top"));
                return std::pair(isGone, after);
            };
            return outcomeOf(pocoRemoves) == outcomeOf(removeTree) ? 0 : 1;
        });
        EXPECT_EQ(outcome.exitStatus, 0) << stubborn;
    }
}

TEST(RemovalAgainstPoco, DoesNotTryABusyDirectoryAgain)
{
    const TemporaryTree tree;
    EXPECT_EQ(attempts([](const std::string& path) { EXPECT_FALSE(removeTree(path)); }, tree), 1);
}
