#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace zolhost::filem
{

/// What changes of the disk come to.
struct Totals
{
    std::size_t directoriesMade = 0;
    std::size_t modesSet = 0; ///< of directories that were there
    std::size_t filesRemoved = 0;
    std::size_t directoriesRemoved = 0;
    std::size_t othersRemoved = 0; ///< links and special files
    std::uint64_t bytesRemoved = 0;
};

enum class Tense
{
    Future, ///< "1 directory to be made, 14 files (12K) and 1 directory to be removed"
    Past    ///< "1 directory made, 14 files (12K) and 1 directory removed"
};

/// Without what is zero; empty if all is.
std::string textOf(const Totals& totals, Tense tense);

} // namespace zolhost::filem
