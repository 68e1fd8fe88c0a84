#include "staging/Holdings.h"

#include <gtest/gtest.h>
#include <string>
#include <thread>
#include <vector>

using zolhost::Holdings;
using Handles = std::vector<unsigned long>;

TEST(Holdings, OfOthersAreToldSorted)
{
    Holdings holdings;
    holdings.add(3, "/r/a");
    holdings.add(1, "/r/a");
    holdings.add(2, "/r/a");
    EXPECT_EQ(holdings.others(2, "/r/a"), (Handles{1, 3}));
    EXPECT_EQ(holdings.others(4, "/r/a"), (Handles{1, 2, 3}));
    EXPECT_EQ(holdings.others(4, "/r/b"), Handles{});
}

TEST(Holdings, CoverWhatIsBelowAndAbove)
{
    Holdings holdings;
    holdings.add(1, "/r/d/");
    EXPECT_EQ(holdings.others(2, "/r/d/e/f"), Handles{1});
    EXPECT_EQ(holdings.others(2, "/r/d/e/"), Handles{1});
    EXPECT_EQ(holdings.others(2, "/r/"), Handles{1});
    for (const char* const other : {"/r/dd", "/r/d-/x", "/r/c/", "/d/"})
    {
        EXPECT_EQ(holdings.others(2, other), Handles{}) << other;
    }
}

TEST(Holdings, OfADirectoryAndAFileOfOneNameMeet)
{
    Holdings holdings;
    holdings.add(1, "/r/a");
    holdings.add(2, "/r/b/");
    EXPECT_EQ(holdings.others(3, "/r/a/"), Handles{1});
    EXPECT_EQ(holdings.others(3, "/r/a/x"), Handles{1});
    EXPECT_EQ(holdings.others(3, "/r/b"), Handles{2});
    holdings.add(1, "/r/a/");
    holdings.remove(1, "/r/a/");
    EXPECT_EQ(holdings.others(3, "/r/a"), Handles{1}) << "it still holds the file";
}

TEST(Holdings, EndOneByOneOrAllAtOnce)
{
    Holdings holdings;
    for (const unsigned long handle : {1UL, 2UL})
    {
        holdings.add(handle, "/r/a");
        holdings.add(handle, "/r/b");
    }
    holdings.remove(1, "/r/a");
    holdings.remove(1, "/r/never held");
    EXPECT_EQ(holdings.others(3, "/r/a"), Handles{2});
    EXPECT_EQ(holdings.others(3, "/r/b"), (Handles{1, 2}));
    holdings.removeAll(2);
    EXPECT_EQ(holdings.others(3, "/r/a"), Handles{});
    EXPECT_EQ(holdings.others(3, "/r/b"), Handles{1});
}

TEST(Holdings, CanBeUsedByManyThreads)
{
    Holdings holdings;
    std::vector<std::thread> threads;
    for (unsigned long handle = 1; handle <= 4; ++handle)
    {
        threads.emplace_back([&holdings, handle] {
            for (int i = 0; i < 500; ++i)
            {
                const std::string path = "/r/" + std::to_string(i);
                holdings.add(handle, path);
                holdings.others(handle, "/r/");
                if (i % 2 == 0)
                {
                    holdings.remove(handle, path);
                }
            }
        });
    }
    for (auto& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(holdings.others(0, "/r/0"), Handles{});
    EXPECT_EQ(holdings.others(0, "/r/1"), (Handles{1, 2, 3, 4}));
}
