#include "rig/SystemCalls.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

using zolbench::systemCallsOf;
using zolbench::total;

void look(int times)
{
    for (int i = 0; i < times; ++i)
    {
        ::syscall(SYS_faccessat, AT_FDCWD, "/", F_OK);
    }
}

TEST(SystemCalls, AreCountedOneByOne)
{
    const auto calls = systemCallsOf([] {}, [] { look(7); });
    EXPECT_EQ(calls, (zolbench::SystemCalls{{SYS_faccessat, 7}}));
    EXPECT_EQ(total(calls), 7);
}

TEST(SystemCalls, OfThePreparationAreNotCounted)
{
    EXPECT_EQ(total(systemCallsOf([] { look(3); }, [] {})), 0);
}

TEST(SystemCalls, ForMemoryAreNotCounted)
{
    EXPECT_EQ(total(systemCallsOf([] {}, [] { ::sbrk(4096); })), 0);
}

TEST(SystemCalls, OfWorkThatFailsAreNotTold)
{
    EXPECT_THROW(systemCallsOf([] {}, [] { throw std::runtime_error("on purpose"); }), std::runtime_error);
}

TEST(SystemCalls, HaveNames)
{
    EXPECT_EQ(zolbench::systemCallName(SYS_getdents64), "getdents64");
    EXPECT_EQ(zolbench::systemCallName(99999), "call 99999");
}

} // namespace
