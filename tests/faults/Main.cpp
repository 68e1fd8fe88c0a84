#include "Campaign.h"
#include "support/MemoryFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

int main(int argc, char** argv)
{
    zoltest::useMemoryFolder();
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
