#include "support/DistinguishedNames.h"
#include "support/LoadedComponent.h"
#include "support/ObservedThread.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"
#include "support/Transaction.h"

#include <algorithm>
#include <functional>
#include <gtest/gtest.h>
#include <list>
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

constexpr unsigned long threads = 4;
constexpr unsigned long rounds = 25;

std::string nameOf(unsigned long thread, unsigned long round)
{
    return std::to_string(thread) + "-" + std::to_string(round);
}

void runOnThreads(const std::function<void(unsigned long)>& work)
{
    std::list<ObservedThread> hostThreads;
    for (unsigned long thread = 0; thread < threads; ++thread)
    {
        hostThreads.emplace_back([&work, thread] { work(thread); });
    }
}

} // namespace

TEST(HostThreads, WorkInTransactionsOfTheirOwnAtOnce)
{
    const TemporaryTree tree;
    Texts expected;
    for (unsigned long thread = 0; thread < threads; ++thread)
    {
        const std::string home = std::to_string(thread);
        tree.file(home + "/file");
        expected.insert(expected.end(), {"d " + home, "f " + home + "/file 1"});
    }
    LoadedComponent component(tree.path());
    std::mutex mutex;
    std::set<unsigned long long> iterators;

    runOnThreads([&](unsigned long thread) {
        const std::string home = fileGroup(std::to_string(thread));
        for (unsigned long round = 0; round < rounds; ++round)
        {
            const auto tx = component.join(thread * rounds + round);
            EXPECT_EQ(tx->create(home, nameOf(thread, round)), 0);
            EXPECT_EQ(tx->count(home, "FileGroup"), round + 1);
            const auto iterator = tx->newIterator(home, "FileInformation");
            char* name = nullptr;
            EXPECT_EQ(component.objects().nextMo(iterator, &name), 0);
            EXPECT_STREQ(name, "file");
            EXPECT_EQ(tx->commit(), 0);
            EXPECT_EQ(component.objects().nextMo(iterator, &name), -2);

            const std::scoped_lock lock(mutex);
            EXPECT_TRUE(iterators.insert(iterator).second) << "id " << iterator << " was drawn twice";
            expected.push_back("d " + std::to_string(thread) + "/" + nameOf(thread, round));
        }
    });

    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(tree.listing(), expected);
    EXPECT_EQ(*iterators.rbegin(), threads * rounds);
}

TEST(HostThreads, ShareOneTransaction)
{
    const TemporaryTree tree;
    LoadedComponent component(tree.path());
    const auto tx = component.join();
    runOnThreads([&tx](unsigned long thread) {
        for (unsigned long round = 0; round < rounds; ++round)
        {
            EXPECT_EQ(tx->create(fileM, nameOf(thread, round)), 0);
        }
    });
    EXPECT_EQ(tx->count(fileM, "FileGroup"), threads * rounds);
    EXPECT_EQ(tx->commit(), 0);
    EXPECT_EQ(tree.listing().size(), threads * rounds);
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
