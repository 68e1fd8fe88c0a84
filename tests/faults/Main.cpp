#include "Campaign.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

int main(int argc, char** argv)
{
    // Thousands of small trees are made and removed: where it can be had, not on a disk.
    if (access("/dev/shm", W_OK | X_OK) == 0)
    {
        setenv("TMPDIR", "/dev/shm", 1);
    }
    testing::InitGoogleTest(&argc, argv);
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto has = [&arguments](const char* argument) {
        return std::find(arguments.begin(), arguments.end(), argument) != arguments.end();
    };
    if (has("--table"))
    {
        return faults::printTable();
    }
    faults::killAtEveryCall = has("--every-call");
    return RUN_ALL_TESTS();
}
