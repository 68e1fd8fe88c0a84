#include "other/Neighbours.h"

#include "other/ManyIterators.h"
#include "rig/ProcessorClock.h"
#include "rig/Tasks.h"
#include "rig/Timing.h"
#include "ways/LibraryTransaction.h"

namespace zolbench
{

namespace
{

constexpr unsigned long own = 1;
constexpr unsigned long neighbour = 2;
constexpr std::size_t iteratorsOfNeighbour = 10000;
constexpr std::size_t commits = 1000;

double timeOfCommit(const Library& library)
{
    const LibraryTransaction transaction(library, own);
    const auto begin = ProcessorClock::now();
    for (std::size_t i = 0; i < commits; ++i)
    {
        requireOk(library.resource().commit(own), "commit");
    }
    const std::chrono::duration<double, std::nano> time = ProcessorClock::now() - begin;
    return time.count() / static_cast<double>(commits);
}

} // namespace

Check checkNeighbours(const Stage& stage, const Library& library, std::size_t repetitions)
{
    const Task task = filesIn(stage.root(), 10);
    stage.fill(task);
    Times times;
    std::size_t opened = 0;
    for (std::size_t repetition = 0; repetition < repetitions; ++repetition)
    {
        times["none"].push_back(timeOfCommit(library));
        const LibraryTransaction other(library, neighbour);
        opened = openIterators(library, neighbour, task, iteratorsOfNeighbour).size();
        times["library"].push_back(timeOfCommit(library));
    }
    return {.what = "an empty commit beside " + std::to_string(opened) + " open iterators of others",
            .unit = "ns",
            .library = median(times["library"]),
            .comparedWith = "beside none",
            .yardstick = median(times["none"]),
            .figure = ratio(times, "library", "none"),
            .goal = 1.2};
}

} // namespace zolbench
