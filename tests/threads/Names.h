#pragma once

#include <array>
#include <random>
#include <string>

namespace threadtest
{

// So few that threads and other programs meet. The ones that need encoding are looked for on the disk.
inline const std::array<std::string, 6> directoryNames = {"a", "b", "c", "d d", "e+e", "f,f"};
inline const std::array<std::string, 6> fileNames = {"f",   "g.txt", "h h",
                                                     "i=i", "j+j",   ".filemnodirectorydelete"};

template<std::size_t size>
const std::string& anyOf(std::mt19937& random, const std::array<std::string, size>& names)
{
    return names[random() % size];
}

} // namespace threadtest
