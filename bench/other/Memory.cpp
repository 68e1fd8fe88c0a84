#include "other/Memory.h"

#include "other/ManyIterators.h"
#include "other/Resident.h"
#include "report/Table.h"
#include "rig/PipedProcess.h"
#include "rig/Tasks.h"
#include "ways/LibraryTransaction.h"

#include <array>

namespace zolbench
{

const char* const memoryOption = "--memory-of";

namespace
{

constexpr unsigned long handle = 1;
constexpr const char* fileClass = "FileInformation";
constexpr std::size_t openedIterators = 10000;

void browse(const Library& library, const Task& task)
{
    unsigned long long iterator = 0;
    requireOk(library.objects().newMoIterator(handle, task.dn.c_str(), fileClass, &iterator),
              "newMoIterator");
    char* name = nullptr;
    do
    {
        requireOk(library.objects().nextMo(iterator, &name), "nextMo");
    } while (name != nullptr);
}

void list(const Library& library, const Task& task)
{
    ZolMoAttributeValueResult_3 result{};
    requireOk(library.objects().getMoAttribute(handle, task.dn.c_str(), "files", &result), "files");
    result.releaseCallback(result.container);
}

double growthOf(MemoryOf what, std::size_t items, const Library& library, const Task& task)
{
    const std::uint64_t before = residentBytes();
    forgetPeak();
    std::uint64_t after = 0;
    switch (what)
    {
    case MemoryOf::names:
        browse(library, task);
        after = residentBytes();
        break;
    case MemoryOf::listing:
        list(library, task);
        after = peakResidentBytes();
        break;
    case MemoryOf::iterators:
        items = openIterators(library, handle, task, items).size();
        after = residentBytes();
        break;
    }
    return static_cast<double>(after - before) / static_cast<double>(items);
}

/// What a probe of this kind prints.
double answerOf(MemoryOf what, std::size_t items, const Stage& stage, const std::filesystem::path& library)
{
    const PipedProcess probe({"/proc/self/exe", memoryOption, std::to_string(static_cast<int>(what)),
                              "--items", std::to_string(items), "--library", library.string(), "--folder",
                              stage.root()});
    std::array<char, 64> answer{};
    probe.read(answer.data(), answer.size() - 1);
    return std::stod(answer.data());
}

Check check(const std::string& what, double bytes, double goal)
{
    return {.what = "memory: " + what,
            .unit = "B",
            .library = bytes,
            .comparedWith = {},
            .yardstick = {},
            .figure = bytes,
            .goal = goal};
}

} // namespace

double residentBytesAnItem(MemoryOf what, std::size_t items, const std::filesystem::path& library,
                           const std::string& root)
{
    const Library loaded(library, root);
    const LibraryTransaction transaction(loaded, handle);
    Task task;
    task.dn = directoriesIn(root, 0).dn;
    // what the process needs once
    browse(loaded, task);
    list(loaded, task);
    task.dn = filesIn(root, 0).dn;
    return growthOf(what, items, loaded, task);
}

std::vector<Check> checkMemory(const Stage& stage, const std::filesystem::path& library,
                               const std::vector<std::size_t>& sizes)
{
    std::vector<Check> checks;
    stage.empty(directoriesIn(stage.root(), 0));
    const auto probe = [&](MemoryOf what, std::size_t items, std::size_t files) {
        stage.fill(filesIn(stage.root(), files));
        return answerOf(what, items, stage, library);
    };
    for (const std::size_t names : sizes)
    {
        checks.push_back(check("a browsed name of " + figure(static_cast<double>(names)),
                               probe(MemoryOf::names, names, names), 64));
    }
    checks.push_back(
        check("a file of `files` at the peak", probe(MemoryOf::listing, sizes.front(), sizes.front()), 750));
    checks.push_back(check("an open iterator", probe(MemoryOf::iterators, openedIterators, 10), 10240));
    return checks;
}

} // namespace zolbench
