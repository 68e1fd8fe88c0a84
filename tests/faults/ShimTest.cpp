#include "FaultShim.h"
#include "support/TemporaryTree.h"

#include <Poco/DirectoryIterator.h>
#include <Poco/File.h>
#include <cerrno>
#include <cstring>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <thread>

using faultshim::Function;
using zoltest::TemporaryTree;

namespace
{

class Shim : public testing::Test
{
protected:
    TemporaryTree tree;
};

} // namespace

TEST_F(Shim, FailsTheCallsThatPocoMakes)
{
    const Poco::File file(tree.file("f"));
    faultshim::plan({Function::Stat, 2, EACCES});
    {
        const faultshim::Armed armed;
        EXPECT_TRUE(file.exists());
        EXPECT_FALSE(file.exists());
        EXPECT_TRUE(file.exists());
    }
    ASSERT_TRUE(faultshim::hasFailed());
    const faultshim::Call& call = faultshim::call(faultshim::failed());
    EXPECT_EQ(faultshim::callerOf(call), faultshim::Caller::Poco);
    EXPECT_STREQ(call.path.data(), tree.path("f").c_str());
}

TEST_F(Shim, FailsAnAllocationOnce)
{
    faultshim::plan({Function::OperatorNew, 1, ENOMEM});
    const faultshim::Armed armed;
    EXPECT_THROW(std::make_unique<int>(1), std::bad_alloc);
    EXPECT_EQ(*std::make_unique<int>(2), 2);
}

TEST_F(Shim, KnowsWhatIsNotFreed)
{
    faultshim::forgetBlocks();
    faultshim::plan();
    int* lost = nullptr;
    char* text = nullptr;
    {
        const faultshim::Armed armed;
        lost = new int(1);
        text = strdup("text");
        std::free(std::malloc(5));
    }
    const std::size_t both = faultshim::liveBlocks().others;
    delete lost;
    std::free(text);
    EXPECT_EQ(both, 2);
    EXPECT_EQ(faultshim::liveBlocks().others, 0);
}

TEST_F(Shim, LeavesOtherThreadsAndTheTestAlone)
{
    const std::string path = tree.file("f");
    faultshim::plan({Function::Stat, 1, EIO});
    const faultshim::Armed armed;
    bool onThread = false;
    {
        const faultshim::Suspended suspended;
        std::thread([&] { onThread = Poco::File(path).exists(); }).join();
        EXPECT_TRUE(Poco::File(path).exists());
    }
    EXPECT_FALSE(Poco::File(path).exists());
    EXPECT_TRUE(onThread);
}

TEST_F(Shim, NotesWhatADirectoryIsReadFor)
{
    const std::string path = tree.directory("d");
    tree.file("d/only");
    faultshim::plan();
    {
        const faultshim::Armed armed;
        for (Poco::DirectoryIterator entry(path); entry != Poco::DirectoryIterator(); ++entry)
        {}
    }
    bool seen = false;
    for (std::size_t i = 0; i < faultshim::callCount(); ++i)
    {
        const faultshim::Call& call = faultshim::call(i);
        seen = seen || (call.function == Function::Readdir && path == call.path.data() &&
                        std::string("only/") == call.entries.data());
    }
    EXPECT_TRUE(seen);
}
