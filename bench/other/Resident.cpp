#include "other/Resident.h"

#include <fstream>
#include <stdexcept>
#include <string>

namespace zolbench
{

namespace
{

std::uint64_t kibibytes(const char* file, const std::string& label)
{
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);)
    {
        if (line.starts_with(label))
        {
            return std::stoull(line.substr(label.size()));
        }
    }
    throw std::runtime_error(std::string(file) + " has no " + label);
}

} // namespace

std::uint64_t residentBytes()
{
    // the sums that cost less to ask for are not exact
    return 1024 * kibibytes("/proc/self/smaps_rollup", "Rss:");
}

std::uint64_t peakResidentBytes()
{
    return 1024 * kibibytes("/proc/self/status", "VmHWM:");
}

void forgetPeak()
{
    std::ofstream("/proc/self/clear_refs") << '5';
}

} // namespace zolbench
