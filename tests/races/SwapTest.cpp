#include "file_management/mo_impl/ChangesFixture.h"
#include "races/SystemCalls.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <set>

using testing::AnyOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsSubsetOf;
using testing::Not;
using zoltest::fileGroup;
using zoltest::fileInformation;
using zoltest::fileM;
using zoltest::SystemCalls;
using zoltest::TemporaryTree;
using zoltest::Texts;

namespace
{

namespace fs = std::filesystem;

/// What another program does to the tree at once.
struct Swap
{
    const char* name;
    std::function<void(const TemporaryTree&)> make;
};

std::ostream& operator<<(std::ostream& stream, const Swap& swap)
{
    return stream << swap.name;
}

// The other program takes what it finds; that something has gone before is no failure of it.
void move(const TemporaryTree& tree, const std::string& from, const std::string& to)
{
    std::error_code ignored;
    fs::rename(tree.path(from), tree.path(to), ignored);
}

void putLink(const TemporaryTree& tree, const std::string& name, const std::string& target)
{
    std::error_code ignored;
    fs::create_symlink(tree.path(target), tree.path(name), ignored);
}

void putFile(const TemporaryTree& tree, const std::string& name)
{
    std::error_code ignored;
    if (fs::exists(tree.path(name).substr(0, tree.path(name).rfind('/')), ignored))
    {
        tree.file(name);
    }
}

void replaceByLink(const TemporaryTree& tree, const std::string& name)
{
    move(tree, name, "aside/taken");
    putLink(tree, name, "outside");
}

const std::vector<Swap> swapsInTheTree = {
    {"DirectoryByLink", [](const TemporaryTree& tree) { replaceByLink(tree, "root/top/sub"); }},
    {"InnerDirectoryByLink", [](const TemporaryTree& tree) { replaceByLink(tree, "root/top/sub/deep"); }},
    {"TopByLink", [](const TemporaryTree& tree) { replaceByLink(tree, "root/top"); }},
    {"FileByLink", [](const TemporaryTree& tree) { replaceByLink(tree, "root/top/sub/f"); }},
    {"EmptyDirectoryByLink",
     [](const TemporaryTree& tree) { replaceByLink(tree, "root/top/sub/deep/empty"); }},
    {"DirectoryByFile",
     [](const TemporaryTree& tree) {
         move(tree, "root/top/sub", "aside/taken");
         putFile(tree, "root/top/sub");
     }},
    {"FileByDirectory",
     [](const TemporaryTree& tree) {
         move(tree, "root/top/sub/f", "aside/taken");
         putFile(tree, "root/top/sub/f/inner");
     }},
    {"LinkByDirectory",
     [](const TemporaryTree& tree) {
         move(tree, "root/top/link", "aside/taken");
         putFile(tree, "root/top/link/inner");
     }},
    {"DirectoryMovedOut", [](const TemporaryTree& tree) { move(tree, "root/top/sub", "outside/dir/moved"); }},
    {"InnerDirectoryMovedOut",
     [](const TemporaryTree& tree) { move(tree, "root/top/sub/deep", "outside/dir/moved"); }},
    {"InnerDirectoryMovedUp",
     [](const TemporaryTree& tree) { move(tree, "root/top/sub/deep", "root/beside/deep"); }},
    {"DirectoryTradedWithOneOutside",
     [](const TemporaryTree& tree) {
         move(tree, "root/top/sub/deep", "aside/taken");
         move(tree, "aside/replacement", "root/top/sub/deep");
     }},
    {"TopMovedOut", [](const TemporaryTree& tree) { move(tree, "root/top", "outside/dir/moved"); }},
    {"FileAdded", [](const TemporaryTree& tree) { putFile(tree, "root/top/sub/deep/late"); }},
};

// Of the same names as what is in the tree, for a removal that has lost its way.
const Texts filesOutside = {"root/beside/keep", "outside/keep",  "outside/f",        "outside/a",
                            "outside/sub/keep", "outside/dir/f", "outside/dir/keep", "outside/dir/g"};
const Texts emptyOutside = {"outside/deep",     "outside/empty",     "outside/dir/sub",
                            "outside/dir/deep", "outside/dir/empty", "root/beside/empty"};

class Swaps : public zoltest::Changes, public testing::WithParamInterface<Swap>
{
protected:
    Swaps() { ZolFileManagement::FileMTransaction::initialize(tree.path("root")); }

    zoltest::RecordedLog log; // what is skipped is logged

    void makeScene() const
    {
        tree.file("root/top/sub/deep/empty/../g");
        tree.directory("root/top/sub/deep/empty");
        tree.file("root/top/sub/f");
        tree.file("root/top/a");
        tree.file("root/top/only");
        tree.link("root/top/link", tree.path("outside"));
        for (const std::string& file : filesOutside)
        {
            tree.file(file);
        }
        for (const std::string& directory : emptyOutside)
        {
            tree.directory(directory);
        }
        tree.file("aside/replacement/inner");
    }

    void expectTheOutsideIsWhole() const
    {
        for (const std::string& file : filesOutside)
        {
            EXPECT_TRUE(tree.exists(file)) << file;
        }
        for (const std::string& directory : emptyOutside)
        {
            EXPECT_TRUE(tree.exists(directory)) << directory;
        }
    }

    void removeScene() const
    {
        for (const char* name : {"root", "outside", "aside"})
        {
            fs::remove_all(tree.path(name));
        }
    }

    /// Makes the swap before each system call of the work in turn, each time in a new scene.
    void beforeEveryCall(const std::function<void()>& prepare, const std::function<void()>& work)
    {
        int last = 0;
        for (int turn = 0; turn <= last; ++turn)
        {
            makeScene();
            prepare();
            int call = 0;
            std::string where = "no call";
            {
                const SystemCalls calls([&](const SystemCalls::Call& made) {
                    if (call++ == turn)
                    {
                        where = made.name + " " + made.path;
                        GetParam().make(tree);
                    }
                });
                work();
            }
            last = std::max(last, call);
            expectTheOutsideIsWhole();
            removeScene();
            if (HasFailure())
            {
                FAIL() << "swapped before call " << turn << ", " << where;
            }
            ASSERT_LT(turn, 10000);
        }
        RecordProperty("swaps", last);
    }
};

} // namespace

TEST_P(Swaps, DuringACommitNeverLeadItOutOfTheTreeThatItRemoves)
{
    beforeEveryCall([this] { ASSERT_EQ(remove(fileGroup("top")), "0 bool[true]"); },
                    [this] { EXPECT_EQ(worker.commit(), 0); });
}

TEST_P(Swaps, DuringTheRemovalOfAFileLeaveAllElseThatIsOutside)
{
    // the name of the file is all that a swap of its directory leads it to, and nothing outside has it
    beforeEveryCall([&] { ASSERT_EQ(deleteM(fileInformation("only", fileGroup("top"))), 0); },
                    [this] { EXPECT_EQ(worker.commit(), 0); });
}

TEST_P(Swaps, DuringADeleteAndItsCommitNeverLeadThemOutOfTheTree)
{
    beforeEveryCall(
        [this] {
            fs::remove(tree.path("root/top/a"));
            fs::remove(tree.path("root/top/only"));
            fs::remove(tree.path("root/top/link"));
            fs::remove(tree.path("root/top/sub/f"));
            fs::remove(tree.path("root/top/sub/deep/g"));
        },
        [this] {
            EXPECT_THAT(deleteM(fileGroup("top")), AnyOf(0, -1, -2));
            EXPECT_EQ(worker.commit(), 0);
        });
}

TEST_P(Swaps, DuringAWalkEndItOrChangeWhatItShowsAndNothingElse)
{
    const std::string top = fileGroup("top");
    beforeEveryCall([] {},
                    [&] {
                        for (const char* className : {"FileGroup", "FileInformation"})
                        {
                            unsigned long long iterator = 0;
                            EXPECT_EQ(worker.newIterator(top.c_str(), className, &iterator), 0);
                            char* name = nullptr;
                            Texts names;
                            while (worker.next(iterator, &name) == 0 && name != nullptr)
                            {
                                names.emplace_back(name);
                            }
                            EXPECT_THAT(names, IsSubsetOf({"sub", "link", "a", "only", "keep", "f", "deep",
                                                           "empty", "dir"}));
                            unsigned long long count = 0;
                            EXPECT_EQ(worker.countMoChildren(top.c_str(), className, &count), 0);
                        }
                    });
}

TEST_P(Swaps, DuringReadsGiveAnAnswerOrAFailure)
{
    const std::string sub = fileGroup("sub", fileGroup("top"));
    const std::string file = fileInformation("f", sub);
    const auto read = [this](const std::string& dn, const char* attribute) {
        QenMoAttributeValueResult_3 result = {nullptr, nullptr};
        EXPECT_THAT(worker.getAttribute(dn.c_str(), attribute, result), AnyOf(0, -1, -2)) << attribute;
        if (result.releaseCallback != nullptr)
        {
            result.releaseCallback(result.container);
        }
    };
    const auto exists = [this](const std::string& dn) {
        try
        {
            worker.existsMo(dn.c_str());
        }
        catch (const std::exception&)
        {
            // to the host it is -1
            return;
        }
    };
    beforeEveryCall([] {},
                    [&] {
                        exists(sub);
                        exists(file);
                        read(sub, "internalHousekeeping");
                        read(sub, "files");
                        read(file, "size");
                        read(file, "modificationTime");
                    });
}

TEST_P(Swaps, DuringTheActionOnFilesNeverReachOutsideTheDirectoryItNamed)
{
    const std::string sub = fileGroup("sub", fileGroup("top"));
    beforeEveryCall([] {},
                    [&] {
                        EXPECT_THAT(removeFile(sub, "g.*"),
                                    AnyOf("0 bool[true]", "0 bool[false]", testing::StartsWith("-")));
                        EXPECT_EQ(worker.commit(), 0);
                    });
}

INSTANTIATE_TEST_SUITE_P(InTheTree, Swaps, testing::ValuesIn(swapsInTheTree),
                         [](const auto& swap) { return swap.param.name; });

namespace
{

class SwapOnTheWay : public zoltest::Changes
{
protected:
    SwapOnTheWay()
    {
        ZolFileManagement::FileMTransaction::initialize(tree.path("root"));
        tree.file("root/way/top/f");
        tree.file("outside/top/f");
        tree.file("outside/keep");
    }

    void swapWay() const { replaceWay(tree); }
    static void replaceWay(const TemporaryTree& tree)
    {
        tree.directory("aside");
        move(tree, "root/way", "aside/way");
        putLink(tree, "root/way", "outside");
    }
};

} // namespace

// Nothing is checked anew at the commit, and what is on the way to an object is followed: both are its rules.
TEST_F(SwapOnTheWay, BetweenTheDeletionAndItsCommitLeadsTheCommitToTheSameNameElsewhere)
{
    ASSERT_EQ(remove(fileGroup("top", fileGroup("way"))), "0 bool[true]");
    swapWay();
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_TRUE(tree.exists("aside/way/top/f"));
    EXPECT_FALSE(tree.exists("outside/top"));
    EXPECT_TRUE(tree.exists("outside/keep"));
}

TEST_F(SwapOnTheWay, DuringTheCommitLeavesItInTheDirectoryThatItHasReached)
{
    ASSERT_EQ(remove(fileGroup("top", fileGroup("way"))), "0 bool[true]");
    bool isReached = false;
    bool isSwapped = false;
    const SystemCalls calls([&](const SystemCalls::Call& call) {
        if (isReached && !isSwapped)
        {
            isSwapped = true;
            replaceWay(tree);
        }
        isReached = isReached || call.name == "open";
    });
    EXPECT_EQ(worker.commit(), 0);
    EXPECT_TRUE(isSwapped);
    EXPECT_FALSE(tree.exists("aside/way/top"));
    EXPECT_TRUE(tree.exists("outside/top/f"));
}
