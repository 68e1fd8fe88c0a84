#include "other/SharedLock.h"

#include "rig/Tasks.h"
#include "rig/Timing.h"
#include "ways/LibraryTransaction.h"
#include "ways/Require.h"

#include <barrier>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <sys/stat.h>
#include <thread>

namespace zolbench
{

namespace
{

constexpr std::size_t filesLookedAt = 1000;
constexpr std::size_t callsOfAll = 40000;

/// Does a thread's call for an item.
using Call = std::function<void(std::size_t thread, const Item& item)>;

/// Calls a second, from the moment when all threads are there to the end of the last one.
double throughput(const Task& task, std::size_t threads, const Call& call)
{
    using Clock = std::chrono::steady_clock;
    Clock::time_point begin;
    const auto started = [&]() noexcept { begin = Clock::now(); };
    std::barrier start(static_cast<std::ptrdiff_t>(threads), started);
    {
        std::vector<std::jthread> running;
        for (std::size_t thread = 0; thread < threads; ++thread)
        {
            running.emplace_back([&, thread] {
                start.arrive_and_wait();
                for (std::size_t i = thread; i < callsOfAll; i += threads)
                {
                    call(thread, task.items[i % task.items.size()]);
                }
            });
        }
    }
    const std::chrono::duration<double> time = Clock::now() - begin;
    return static_cast<double>(callsOfAll) / time.count();
}

double throughputOfLibrary(const Library& library, const Task& task, std::size_t threads)
{
    std::vector<std::unique_ptr<LibraryTransaction>> transactions;
    for (std::size_t thread = 0; thread < threads; ++thread)
    {
        transactions.push_back(std::make_unique<LibraryTransaction>(library, 1 + thread));
    }
    return throughput(task, threads, [&](std::size_t thread, const Item& item) {
        bool exists = false;
        requireOk(library.objects().existsMo(transactions[thread]->handle(), item.dn.c_str(), &exists),
                  "existsMo");
    });
}

double throughputOfMutex(const Task& task, std::size_t threads)
{
    std::mutex mutex;
    return throughput(task, threads, [&](std::size_t, const Item& item) {
        const std::scoped_lock lock(mutex);
        struct stat status
        {};
        require(::stat(item.path.c_str(), &status) == 0, "stat");
    });
}

} // namespace

std::vector<Check> checkSharedLock(const Stage& stage, const Library& library, std::size_t repetitions)
{
    const Task task = filesIn(stage.root(), filesLookedAt);
    stage.fill(task);
    std::vector<Check> checks;
    for (const std::size_t threads : {2U, 4U, 8U})
    {
        Times rates;
        for (std::size_t repetition = 0; repetition < repetitions; ++repetition)
        {
            rates["library"].push_back(throughputOfLibrary(library, task, threads));
            rates["mutex"].push_back(throughputOfMutex(task, threads));
        }
        checks.push_back({.what = std::to_string(threads) + " threads, `existsMo`",
                          .unit = "calls/s",
                          .library = median(rates["library"]),
                          .comparedWith = "`stat` under a mutex",
                          .yardstick = median(rates["mutex"]),
                          .figure = ratio(rates, "library", "mutex"),
                          .goal = 0.9,
                          .isLeast = true});
    }
    return checks;
}

} // namespace zolbench
