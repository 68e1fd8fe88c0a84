#include "OnThreads.h"

#include <gtest/gtest.h>
#include <mutex>
#include <zol/common/ZolThreadLock.h>

namespace
{

constinit Zol::ZolThreadLock staticLock;

TEST(ThreadLock, InStaticStorageLetsOneThreadInAtATime)
{
    long count = 0;
    zoltest::onThreads(4, [&count](int /*thread*/) {
        for (int step = 0; step < 10'000; ++step)
        {
            const std::scoped_lock guard(staticLock);
            const long before = count;
            std::this_thread::yield();
            count = before + 1;
        }
    });
    EXPECT_EQ(count, 40'000);
}

} // namespace
