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
    ~Shim() override { faultshim::disarm(); }

    TemporaryTree tree;
};

} // namespace

TEST_F(Shim, FailsTheCallsThatPocoMakes)
{
    const Poco::File file(tree.file("f"));
    faultshim::arm({Function::Stat, 2, EACCES});
    const bool first = file.exists();
    const bool second = file.exists();
    const bool third = file.exists();
    faultshim::disarm();
    EXPECT_TRUE(first);
    EXPECT_FALSE(second);
    EXPECT_TRUE(third);
    ASSERT_TRUE(faultshim::hasFailed());
    const faultshim::Call& call = faultshim::call(faultshim::failed());
    EXPECT_EQ(call.caller, faultshim::Caller::Poco);
    EXPECT_STREQ(call.path.data(), tree.path("f").c_str());
}

TEST_F(Shim, FailsAnAllocationOnce)
{
    faultshim::arm({Function::OperatorNew, 1, ENOMEM});
    bool failed = false;
    try
    {
        const auto first = std::make_unique<int>(1);
    }
    catch (const std::bad_alloc&)
    {
        failed = true;
    }
    const auto second = std::make_unique<int>(2);
    faultshim::disarm();
    EXPECT_TRUE(failed);
    EXPECT_EQ(*second, 2);
}

TEST_F(Shim, KnowsWhatIsNotFreed)
{
    faultshim::forgetBlocks();
    faultshim::arm();
    auto* lost = new int(1);
    char* text = strdup("text");
    std::free(std::malloc(5));
    faultshim::disarm();
    const std::size_t both = faultshim::liveBlocks();
    delete lost;
    std::free(text);
    EXPECT_EQ(both, 2);
    EXPECT_EQ(faultshim::liveBlocks(), 0);
}

TEST_F(Shim, LeavesOtherThreadsAndTheTestAlone)
{
    const std::string path = tree.file("f");
    faultshim::arm({Function::Stat, 1, EIO});
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
    faultshim::arm();
    for (Poco::DirectoryIterator entry(path); entry != Poco::DirectoryIterator(); ++entry)
    {}
    faultshim::disarm();
    bool seen = false;
    for (std::size_t i = 0; i < faultshim::callCount(); ++i)
    {
        const faultshim::Call& call = faultshim::call(i);
        seen = seen || (call.function == Function::Readdir && path == call.path.data() &&
                        std::string("only") == call.entry.data());
    }
    EXPECT_TRUE(seen);
}
