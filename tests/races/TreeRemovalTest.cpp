#include "TreeRemoval.h"

#include "file_management/mo_impl/ProcessState.h"
#include "races/SystemCalls.h"
#include "support/ChildProcess.h"
#include "support/TemporaryTree.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

using testing::ElementsAre;
using testing::IsEmpty;
using ZolFileManagement::removeTree;
using zoltest::SystemCalls;
using zoltest::TemporaryTree;

namespace
{

void require(bool holds, const std::string& what)
{
    if (!holds)
    {
        throw std::system_error(errno, std::generic_category(), what);
    }
}

/// Directories one in the other, each with a file beside the next one, further down than a path name reaches.
void makeDeep(const std::string& top, int levels)
{
    require(::mkdir(top.c_str(), 0700) == 0, top);
    int current = ::open(top.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < levels; ++level)
    {
        require(::mkdirat(current, "d", 0700) == 0, "mkdirat");
        const int next = ::openat(current, "d", O_PATH | O_DIRECTORY | O_CLOEXEC);
        require(next >= 0, "openat");
        ::close(current);
        current = next;
    }
    const int file = ::openat(current, "f", O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
    require(file >= 0, "openat");
    ::close(file);
    ::close(current);
}

// The lowest number that is free is the one that the next handle gets.
void allowNoMoreHandlesThan(rlim_t count)
{
    const int lowest = ::open("/", O_PATH | O_CLOEXEC);
    ::close(lowest);
    rlimit limit{};
    require(::getrlimit(RLIMIT_NOFILE, &limit) == 0, "getrlimit");
    limit.rlim_cur = static_cast<rlim_t>(lowest) + count;
    require(::setrlimit(RLIMIT_NOFILE, &limit) == 0, "setrlimit");
}

} // namespace

TEST(TreeRemoval, RemovesADirectoryWithAllThatIsInIt)
{
    const TemporaryTree tree;
    tree.file("top/a/b/f");
    tree.file("top/.hidden");
    tree.directory("top/a/empty");
    tree.file("beside");
    EXPECT_TRUE(removeTree(tree.path("top")));
    EXPECT_THAT(tree.listing(), ElementsAre("f beside 1"));
}

TEST(TreeRemoval, TakesADirectoryWithAndWithoutAClosingSlash)
{
    const TemporaryTree tree;
    tree.directory("one");
    tree.file("two/f");
    tree.file("three");
    EXPECT_TRUE(removeTree(tree.path("one/")));
    EXPECT_TRUE(removeTree(tree.path("two/")));
    EXPECT_TRUE(removeTree(tree.path("three/"))); // what stands there now goes, whatever it is
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST(TreeRemoval, TakesANameInTheWorkingDirectory)
{
    const TemporaryTree tree;
    tree.file("d/top/f");
    tree.file("d/g");
    tree.file("d/t/f");
    const zoltest::ChildOutcome outcome = zoltest::runInChild([&tree] {
        std::filesystem::current_path(tree.path("d"));
        return removeTree("top/") && removeTree("g") && removeTree("t/") ? 0 : 1;
    });
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_THAT(tree.listing(), ElementsAre("d d"));
}

TEST(TreeRemoval, EmptiesTheRootOfTheFileSystemWhichItCannotRemove)
{
    constexpr int notAllowed = 2;
    const TemporaryTree tree;
    tree.file("a/f");
    const zoltest::ChildOutcome outcome = zoltest::runInChild([&tree] {
        if (::geteuid() != 0 && ::unshare(CLONE_NEWUSER) != 0)
        {
            return notAllowed;
        }
        const int wholeDisk = ::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC);
        require(::chroot(tree.path().c_str()) == 0 && ::chdir("/") == 0, "chroot");
        const bool removed = removeTree("/");
        // what a child writes at its end belongs elsewhere
        require(::fchdir(wholeDisk) == 0 && ::chroot(".") == 0, "chroot back");
        return removed ? 1 : 0;
    });
    if (outcome.exitStatus == notAllowed)
    {
        GTEST_SKIP() << "may not change its root";
    }
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.standardError;
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST(TreeRemoval, RemovesLinksAndNeverWhatTheyLeadTo)
{
    const TemporaryTree tree;
    tree.file("outside/keep");
    tree.link("top/out", tree.path("outside"));
    tree.link("top/file", tree.path("outside/keep"));
    tree.link("top/up", "..");
    tree.link("top/itself", "itself");
    tree.link("top/nowhere", "no/where");
    tree.link("link", tree.path("outside"));
    EXPECT_TRUE(removeTree(tree.path("top")));
    EXPECT_TRUE(removeTree(tree.path("link/")));
    EXPECT_THAT(tree.listing(), ElementsAre("d outside", "f outside/keep 1"));
}

TEST(TreeRemoval, FollowsLinksOnTheWayToTheTree)
{
    const TemporaryTree tree;
    tree.file("elsewhere/top/f");
    tree.link("way", tree.path("elsewhere"));
    EXPECT_TRUE(removeTree(tree.path("way/top")));
    EXPECT_THAT(tree.listing(), ElementsAre("d elsewhere", "l way -> " + tree.path("elsewhere")));
}

TEST(TreeRemoval, RemovesPipesAndSocketsWithoutOpeningThem)
{
    const TemporaryTree tree;
    tree.directory("top");
    require(::mkfifo(tree.path("top/pipe").c_str(), 0600) == 0, "mkfifo");
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    tree.path("top/socket").copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
    require(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0, "bind");
    EXPECT_TRUE(removeTree(tree.path("top")));
    ::close(socket);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST(TreeRemoval, FailsWhereNothingIs)
{
    const TemporaryTree tree;
    tree.file("f");
    EXPECT_FALSE(removeTree(tree.path("missing")));
    EXPECT_FALSE(removeTree(tree.path("missing/too")));
    EXPECT_FALSE(removeTree(tree.path("f/below")));
    EXPECT_THAT(tree.listing(), ElementsAre("f f 1"));
}

TEST(TreeRemoval, LeavesNoHandleOpen)
{
    const TemporaryTree tree;
    tree.file("top/a/b/f");
    tree.file("other/a/f");
    EXPECT_TRUE(removeTree(tree.path("top")));
    {
        const SystemCalls calls([&tree](const SystemCalls::Call& call) {
            if (call.name == "rmdir" && call.path == "a")
            {
                std::filesystem::remove(tree.path("other/a"));
            }
        });
        EXPECT_FALSE(removeTree(tree.path("other")));
    }
    EXPECT_EQ(tree.openDescriptors(), 0);
}

TEST(TreeRemoval, LeavesNoHandleOpenWhereStandardInputIsClosed)
{
    const TemporaryTree tree;
    tree.file("top/a/f");
    const zoltest::ChildOutcome outcome = zoltest::runInChild([&tree] {
        ::close(STDIN_FILENO);
        return removeTree(tree.path("top")) && ::fcntl(STDIN_FILENO, F_GETFD) == -1 ? 0 : 1;
    });
    EXPECT_EQ(outcome.exitStatus, 0);
    EXPECT_THAT(tree.listing(), IsEmpty());
}

TEST(TreeRemoval, KeepsItsHandlesFromCommandsThatOtherThreadsStart)
{
    const TemporaryTree tree;
    tree.file("top/a/b/f");
    tree.file("top/g");
    std::size_t handles = 0;
    {
        const SystemCalls calls([&](const SystemCalls::Call& call) {
            if (call.name == "open")
            {
                return;
            }
            for (int number = STDERR_FILENO + 1; number < 64; ++number)
            {
                std::error_code notOpen;
                const auto target =
                    std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(number), notOpen);
                if (target.string().starts_with(tree.path()))
                {
                    ++handles;
                    EXPECT_EQ(::fcntl(number, F_GETFD), FD_CLOEXEC) << target << " before " << call.name;
                }
            }
        });
        EXPECT_TRUE(removeTree(tree.path("top")));
    }
    EXPECT_GT(handles, 0U);
}

TEST(TreeRemoval, RemovesFromADirectoryThatMayNotBeRead)
{
    const TemporaryTree tree;
    tree.directory("closed");
    tree.chmod("closed", 0777);
    ASSERT_EQ(zoltest::asOrdinaryUser(tree, [&tree] { return tree.file("closed/top/a/f"); }),
              tree.path("closed/top/a/f"));
    tree.chmod("closed", 0333);
    EXPECT_EQ(zoltest::asOrdinaryUser(
                  tree, [&tree] { return removeTree(tree.path("closed/top")) ? "removed" : "not removed"; }),
              "removed");
}

TEST(TreeRemoval, StopsWhereADirectoryIsClosedWhileItIsInIt)
{
    const TemporaryTree tree;
    tree.directory("open");
    tree.chmod("open", 0777);
    const std::string outcome = zoltest::asOrdinaryUser(tree, [&tree] {
        tree.file("open/top/a/f");
        const SystemCalls calls([&tree](const SystemCalls::Call& call) {
            if (call.name == "openat" && call.path == "..")
            {
                tree.chmod("open/top/a", 0);
            }
        });
        return removeTree(tree.path("open/top")) ? "removed" : "not removed";
    });
    tree.chmod("open/top/a", 0700);
    EXPECT_EQ(outcome, "not removed");
    EXPECT_THAT(tree.listing(), ElementsAre("d open", "d open/top", "d open/top/a"));
}

TEST(TreeRemoval, DoesNotWaitForAPipeThatTakesTheDirectorysPlace)
{
    const TemporaryTree tree;
    tree.file("top/sub/f");
    {
        const SystemCalls calls([&tree](const SystemCalls::Call& call) {
            if (call.name == "openat" && call.path == "sub")
            {
                std::filesystem::remove_all(tree.path("top/sub"));
                require(::mkfifo(tree.path("top/sub").c_str(), 0600) == 0, "mkfifo");
            }
        });
        EXPECT_FALSE(removeTree(tree.path("top")));
    }
    EXPECT_THAT(tree.listing(), ElementsAre("? top/sub", "d top"));
}

TEST(TreeRemoval, LeavesADirectoryThatItHasNoHandleToRead)
{
    const TemporaryTree tree;
    tree.directory("top");
    rlimit usual{};
    require(::getrlimit(RLIMIT_NOFILE, &usual) == 0, "getrlimit");
    {
        bool isEntered = false;
        const SystemCalls calls([&](const SystemCalls::Call& call) {
            if (call.name == "fdopendir")
            {
                require(::setrlimit(RLIMIT_NOFILE, &usual) == 0, "setrlimit");
            }
            else if (isEntered)
            {
                allowNoMoreHandlesThan(0);
            }
            isEntered = call.name == "openat";
        });
        EXPECT_FALSE(removeTree(tree.path("top")));
    }
    EXPECT_THAT(tree.listing(), ElementsAre("d top"));
}

TEST(TreeRemoval, LeavesADirectoryThatIsMovedAwayWithWhatIsPutThere)
{
    const TemporaryTree tree;
    tree.file("top/sub/f");
    {
        const SystemCalls calls([&tree](const SystemCalls::Call& call) {
            if (call.name == "openat" && call.path == "..")
            {
                std::filesystem::rename(tree.path("top/sub"), tree.path("elsewhere"));
                tree.file("elsewhere/sub");
            }
        });
        EXPECT_FALSE(removeTree(tree.path("top")));
    }
    EXPECT_THAT(tree.listing(), ElementsAre("d elsewhere", "d top", "f elsewhere/sub 1"));
}

TEST(TreeRemoval, NeedsFourHandlesAndNoMoreStackForATreeOfAnyDepth)
{
    // many enough for any stack, where memory serves as the disk
    const TemporaryTree tree;
    makeDeep(tree.path("top"), tree.path().starts_with("/dev/shm/") ? 100000 : 3000);
    const zoltest::ChildOutcome outcome = zoltest::runInChild([&tree] {
        allowNoMoreHandlesThan(4);
        return removeTree(tree.path("top")) ? 0 : 1;
    });
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.standardError;
    EXPECT_THAT(tree.listing(), IsEmpty());
}
