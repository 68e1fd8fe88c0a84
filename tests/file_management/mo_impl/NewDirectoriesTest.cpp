#include "NewDirectories.h"

#include "SystemFaults.h"
#include "support/ChildProcess.h"
#include "support/OrdinaryUser.h"
#include "support/TemporaryTree.h"
#include "support/WorkingDirectory.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using testing::ElementsAre;
using ZolFileManagement::NewDirectories;
using zoltest::SystemFaults;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

class NewDirectoriesTest : public testing::Test
{
protected:
    NewDirectoriesTest()
    {
        tree.directory("p");
        tree.chmod("p", 02755);
    }

    void make(const std::string& name) { directories.make(tree.path(name) + "/"); }

    TemporaryTree tree;
    NewDirectories directories;
};

std::string chain(const std::string& top, int levels)
{
    std::string name = top;
    for (int level = 1; level < levels; ++level)
    {
        name += "/d";
    }
    return name;
}

} // namespace

TEST_F(NewDirectoriesTest, LookAtAParentOnceForAllThatAreMadeInIt)
{
    Texts lookedAt;
    SystemFaults system;
    system.stat = [&](const std::string& path) {
        lookedAt.push_back(path);
        return 0;
    };
    make("p/a");
    make("p/b");
    make("p/c");
    make("q");
    EXPECT_THAT(lookedAt, ElementsAre(tree.path("p") + "/", tree.path("") + "/"));
    EXPECT_EQ(tree.mode("p/c"), 02770U);
    EXPECT_EQ(tree.mode("q"), 0770U);
}

TEST_F(NewDirectoriesTest, LookAgainAtAParentThatCouldNotBeLookedAt)
{
    SystemFaults system;
    system.stat = [](const std::string&) { return EIO; };
    make("p/a");
    system.stat = nullptr;
    make("p/b");
    EXPECT_EQ(tree.mode("p/a"), 0770U);
    EXPECT_EQ(tree.mode("p/b"), 02770U);
}

TEST_F(NewDirectoriesTest, LookAgainAtAParentThatMayHaveGotAModeByAnotherName)
{
    tree.directory("p/a");
    tree.chmod("p/a", 0755);
    tree.link("p/a/up", tree.path("p"));
    make("p/0");
    make("p/a/up");
    make("p/b");
    EXPECT_EQ(tree.mode("p/0"), 02770U);
    EXPECT_EQ(tree.mode("p"), 0770U);
    EXPECT_EQ(tree.mode("p/b"), 0770U);
}

TEST_F(NewDirectoriesTest, LookAgainAtAParentThatMayHaveLostItsBitByAnotherName)
{
    if (::geteuid() != 0)
    {
        GTEST_SKIP() << "may not give a directory to a group that it isn't in";
    }
    constexpr gid_t foreignGroup = 12345;
    tree.link("p/m", ".");
    tree.chmod("", 0755);
    ASSERT_EQ(::chown(tree.path("p").c_str(), zoltest::ordinaryUser(), foreignGroup), 0);
    tree.chmod("p", 02755);
    const zoltest::ChildOutcome outcome = zoltest::runInChild([this] {
        zoltest::becomeOrdinaryUser();
        make("p/a");
        make("p/m"); // the mode of p, without the bit
        make("p/z");
        return 0;
    });
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.standardError;
    EXPECT_EQ(tree.mode("p"), 0770U);
    EXPECT_EQ(tree.mode("p/z"), 0770U);
}

TEST_F(NewDirectoriesTest, InheritTheSetgidBitThroughManyLevels)
{
    for (int levels = 1; levels <= 100; ++levels)
    {
        make(chain("p/d", levels));
    }
    for (int levels = 1; levels <= 100; ++levels)
    {
        EXPECT_EQ(tree.mode(chain("p/d", levels)), 02770U) << levels;
    }
}

TEST_F(NewDirectoriesTest, AreMadeOnAnyLevelBehindDeepOnes)
{
    for (int levels = 1; levels <= 60; ++levels)
    {
        make(chain("a", levels));
    }
    Texts others;
    for (const int levels : {59, 40, 36, 20, 5, 1})
    {
        for (const char* name : {"/x", "/x/y", "/z"})
        {
            others.push_back(chain("a", levels) + name);
            make(others.back());
        }
    }
    others.push_back("b");
    make("b");
    for (const std::string& name : others)
    {
        EXPECT_EQ(tree.mode(name), 0770U) << name;
    }
}

TEST_F(NewDirectoriesTest, AreMadeFromTheWorkingDirectoryWhereTheirPathsBeginThere)
{
    tree.directory(chain("there", 41));
    tree.chmod(chain("there", 40), 02755);
    tree.chmod(chain("there", 41), 0700);
    const zoltest::WorkingDirectory here(tree.path());
    for (int levels = 1; levels <= 60; ++levels)
    {
        directories.make(chain("deep", levels) + "/");
    }
    directories.make("late/");
    for (int levels = 1; levels <= 39; ++levels)
    {
        directories.make(chain("new", levels) + "/");
    }
    directories.make(chain("there", 41) + "/"); // is there
    EXPECT_EQ(tree.mode(chain("deep", 60)), 0770U);
    EXPECT_EQ(tree.mode("late"), 0770U);
    EXPECT_EQ(tree.mode(chain("new", 39)), 0770U);
    EXPECT_EQ(tree.mode(chain("there", 41)), 02770U);
}

TEST_F(NewDirectoriesTest, GetTheirModesFromTheWorkingDirectoryBehindADeepOneThatIsThere)
{
    const zoltest::WorkingDirectory here(tree.path());
    for (int levels = 1; levels <= 30; ++levels)
    {
        directories.make(chain("d", levels) + "/");
    }
    tree.directory(chain("d", 30) + "/there");
    tree.chmod(chain("d", 30) + "/there", 0700);
    directories.make(chain("d", 30) + "/new/");
    directories.make(chain("d", 30) + "/there/");
    directories.make(chain("d", 30) + "/there/new/");
    for (const char* name : {"/new", "/there", "/there/new"})
    {
        EXPECT_EQ(tree.mode(chain("d", 30) + name), 0770U) << name;
    }
}

TEST_F(NewDirectoriesTest, AreMadeByTheirWholePathsWhereNoHandleIsFree)
{
    Texts paths;
    for (int levels = 1; levels <= 60; ++levels)
    {
        paths.push_back(tree.path(chain("p/d", levels)) + "/");
    }
    // nothing of the fixture itself in there: the sanitizer takes a handle to look whether it is one
    const zoltest::ChildOutcome outcome = zoltest::runInChild([&made = directories, &paths] {
        const int lowest = ::open("/", O_PATH | O_CLOEXEC);
        ::close(lowest);
        const rlimit limit{static_cast<rlim_t>(lowest), static_cast<rlim_t>(lowest)};
        if (::setrlimit(RLIMIT_NOFILE, &limit) != 0)
        {
            return 1;
        }
        for (const std::string& path : paths)
        {
            made.make(path);
        }
        return 0;
    });
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.standardError;
    EXPECT_EQ(tree.mode(chain("p/d", 60)), 02770U);
}

TEST_F(NewDirectoriesTest, LeaveNoHandleOpen)
{
    const int before = ::open("/", O_PATH | O_CLOEXEC);
    ::close(before);
    {
        NewDirectories others;
        for (int levels = 1; levels <= 60; ++levels)
        {
            others.make(tree.path(chain("a", levels)) + "/");
        }
    }
    const int after = ::open("/", O_PATH | O_CLOEXEC);
    ::close(after);
    EXPECT_EQ(after, before);
}
