#include "file_management/mo_impl/ChangesFixture.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

using testing::AnyOf;
using zoltest::fileGroup;
using zoltest::TemporaryTree;
using zoltest::Texts;

namespace
{

namespace fs = std::filesystem;

constexpr unsigned long tops = 4;

std::string topName(unsigned long number)
{
    return "t" + std::to_string(number % tops);
}

/// Swaps what is below the tops for links out and other directories, as fast as it can, until its end. It
/// goes through no link itself.
class Attacker
{
public:
    Attacker(const TemporaryTree& tree, unsigned int seed)
        : _process(::fork())
    {
        if (_process == 0)
        {
            attack(tree, seed);
        }
    }
    Attacker(const Attacker&) = delete;
    Attacker& operator=(const Attacker&) = delete;
    ~Attacker()
    {
        ::kill(_process, SIGKILL);
        ::waitpid(_process, nullptr, 0);
    }

private:
    [[noreturn]] static void attack(const TemporaryTree& tree, unsigned int seed)
    {
        std::mt19937 random(seed);
        const std::string outside = tree.path("outside");
        const std::string aside = tree.path("aside/");
        for (int round = 0;; ++round)
        {
            std::error_code ignored;
            const std::string victim = tree.path("root/" + topName(random()) + "/dir");
            fs::rename(victim, aside + std::to_string(round % 16), ignored);
            switch (random() % 4)
            {
            case 0:
                fs::create_symlink(outside, victim, ignored);
                break;
            case 1:
                fs::rename(aside + std::to_string(random() % 16), victim, ignored);
                break;
            case 2:
                fs::rename(victim, aside + std::to_string(random() % 16), ignored);
                break;
            default:
                fs::create_directory(victim, ignored);
            }
        }
    }

    pid_t _process;
};

class Storm : public zoltest::Changes
{
protected:
    Storm()
    {
        ZolFileManagement::FileMTransaction::initialize(tree.path("root"));
        tree.directory("root");
        tree.directory("aside");
        for (const char* file : {"keep", "dir/keep", "dir/dir/keep", "inner/keep"})
        {
            tree.file(std::string("outside/") + file);
        }
    }

    zoltest::RecordedLog log; // what is skipped is logged

    Texts outside() const
    {
        Texts lines;
        for (const auto& entry : fs::recursive_directory_iterator(tree.path("outside")))
        {
            lines.push_back(entry.path());
        }
        std::sort(lines.begin(), lines.end());
        return lines;
    }
};

} // namespace

TEST_F(Storm, OfSwapsNeverLeadsAWalkACheckOrACommitOutOfTheTree)
{
    constexpr unsigned int rounds = 1500;
    const Texts before = outside();
    const Attacker attacker(tree, 1);
    for (unsigned int round = 0; round < rounds && !HasFailure(); ++round)
    {
        const std::string top = fileGroup(topName(round));
        std::error_code ignored;
        fs::create_directories(tree.path("new/dir/dir/inner"), ignored);
        fs::create_directory(tree.path("root/" + topName(round)), ignored);
        fs::rename(tree.path("new/dir"), tree.path("root/" + topName(round) + "/dir"), ignored);
        unsigned long long count = 0;
        EXPECT_EQ(worker.countMoChildren(top.c_str(), "FileGroup", &count), 0);
        if (round % 2 == 0)
        {
            EXPECT_THAT(deleteM(top), AnyOf(0, -1, -2));
        }
        else
        {
            EXPECT_THAT(remove(top), AnyOf("0 bool[true]", "0 bool[false]"));
        }
        EXPECT_EQ(create("new" + std::to_string(round), top), 0);
        EXPECT_THAT(worker.commit(), AnyOf(0, -1));
        ASSERT_EQ(outside(), before) << "after round " << round;
    }
}
