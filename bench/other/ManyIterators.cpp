#include "other/ManyIterators.h"

#include "ways/LibraryTransaction.h"
#include "ways/Require.h"

#include <algorithm>
#include <sys/resource.h>

namespace zolbench
{

namespace
{

constexpr rlim_t descriptorsOfOthers = 100;

std::size_t mostDescriptors(std::size_t wanted)
{
    rlimit limit{};
    require(::getrlimit(RLIMIT_NOFILE, &limit) == 0, "getrlimit");
    limit.rlim_cur = std::min(limit.rlim_max, static_cast<rlim_t>(wanted) + descriptorsOfOthers);
    require(::setrlimit(RLIMIT_NOFILE, &limit) == 0, "setrlimit");
    return limit.rlim_cur - descriptorsOfOthers;
}

} // namespace

std::vector<unsigned long long> openIterators(const Library& library, unsigned long handle, const Task& task,
                                              std::size_t wanted)
{
    std::vector<unsigned long long> iterators(std::min(wanted, mostDescriptors(wanted)));
    for (unsigned long long& iterator : iterators)
    {
        requireOk(library.objects().newMoIterator(handle, task.dn.c_str(), "FileInformation", &iterator),
                  "newMoIterator");
    }
    return iterators;
}

} // namespace zolbench
