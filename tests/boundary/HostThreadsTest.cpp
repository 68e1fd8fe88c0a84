#include "support/DistinguishedNames.h"
#include "support/LoadedComponent.h"
#include "support/ObservedThread.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

using zoltest::fileGroup;
using zoltest::fileM;
using zoltest::LoadedComponent;
using zoltest::ObservedThread;
using zoltest::RecordedLog;
using zoltest::TemporaryTree;

namespace
{

using Texts = std::vector<std::string>;

constexpr int threads = 4;
constexpr int transactionsPerThread = 25;

std::string nameOf(int thread, int number)
{
    return std::to_string(thread) + "-" + std::to_string(number);
}

} // namespace

TEST(HostThreads, WorkInTransactionsOfTheirOwnAtOnce)
{
    const TemporaryTree tree;
    for (int thread = 0; thread < threads; ++thread)
    {
        tree.file(std::to_string(thread) + "/file");
    }
    LoadedComponent component(tree.path());
    std::mutex mutex;
    std::set<unsigned long long> iterators;

    const auto work = [&](int thread) {
        const std::string home = fileGroup(std::to_string(thread));
        for (int number = 0; number < transactionsPerThread; ++number)
        {
            const auto handle = static_cast<unsigned long>(thread * transactionsPerThread + number);
            const auto tx = component.join(handle);
            EXPECT_EQ(tx->create(home, nameOf(thread, number)), 0);
            EXPECT_EQ(tx->count(home, "FileGroup"), static_cast<unsigned>(number) + 1);
            const auto iterator = tx->newIterator(home, "FileInformation");
            {
                const std::scoped_lock lock(mutex);
                EXPECT_TRUE(iterators.insert(iterator).second) << "id " << iterator << " was drawn twice";
            }
            char* name = nullptr;
            EXPECT_EQ(component.objects().nextMo(iterator, &name), 0);
            EXPECT_STREQ(name, "file");
            EXPECT_EQ(tx->commit(), 0);
            EXPECT_EQ(component.objects().nextMo(iterator, &name), -2);
        }
    };
    {
        std::vector<std::unique_ptr<ObservedThread>> hostThreads;
        for (int thread = 0; thread < threads; ++thread)
        {
            hostThreads.push_back(std::make_unique<ObservedThread>([&work, thread] { work(thread); }));
        }
    }

    Texts expected;
    for (int thread = 0; thread < threads; ++thread)
    {
        expected.push_back("d " + std::to_string(thread));
        expected.push_back("f " + std::to_string(thread) + "/file 1");
        for (int number = 0; number < transactionsPerThread; ++number)
        {
            expected.push_back("d " + std::to_string(thread) + "/" + nameOf(thread, number));
        }
    }
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(tree.listing(), expected);
    EXPECT_EQ(*iterators.rbegin(), static_cast<unsigned>(threads * transactionsPerThread));
}

TEST(HostThreads, ShareOneTransaction)
{
    const TemporaryTree tree;
    LoadedComponent component(tree.path());
    const auto tx = component.join();
    {
        std::vector<std::unique_ptr<ObservedThread>> hostThreads;
        for (int thread = 0; thread < threads; ++thread)
        {
            hostThreads.push_back(std::make_unique<ObservedThread>([&tx, thread] {
                for (int number = 0; number < transactionsPerThread; ++number)
                {
                    EXPECT_EQ(tx->create(fileM, nameOf(thread, number)), 0);
                }
            }));
        }
    }
    EXPECT_EQ(tx->count(fileM, "FileGroup"), static_cast<unsigned>(threads * transactionsPerThread));
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tree.listing().size(), static_cast<unsigned>(threads * transactionsPerThread));
}

TEST(HostThreads, WaitForEachOtherOnceTheyHaveTracedTheirEntry)
{
    const TemporaryTree tree;
    LoadedComponent component(tree.path());
    const RecordedLog log;
    std::unique_ptr<ObservedThread> other;
    component.host.whileRegistering = [&](unsigned long) {
        other = std::make_unique<ObservedThread>([&] { component.resource().commit(4711); });
        while (log.calls().size() < 4)
        {
            std::this_thread::yield();
        }
        EXPECT_TRUE(other->waits());
    };
    const auto tx = component.join(7);
    other.reset();
    EXPECT_EQ(log.statements(),
              (Texts{"enter  >> txHandle='7'", "enter  >> txHandle='4711'", "exit  << ", "exit  << "}));
}
