#include <gtest/gtest.h>
#include <mutex>
#include <thread>
#include <vector>
#include <zol/common/ZolThreadLock.h>

namespace
{

constinit Zol::ZolThreadLock staticLock;

TEST(ThreadLock, InStaticStorageLetsOneThreadInAtATime)
{
    long count = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
    {
        threads.emplace_back([&count] {
            for (int step = 0; step < 10'000; ++step)
            {
                const std::scoped_lock guard(staticLock);
                count = count + 1;
            }
        });
    }
    for (auto& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(count, 40'000);
}

} // namespace
