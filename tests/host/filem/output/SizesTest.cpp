#include "filem/output/Sizes.h"

#include <gtest/gtest.h>
#include <string>

using namespace zolhost::filem;

TEST(Sizes, AreRoundedUpToWhatAnOperatorReads)
{
    struct Case
    {
        std::uint64_t bytes;
        std::string text;
    };
    const Case cases[] = {
        {0, "0"},
        {1023, "1023"},
        {1024, "1.0K"},
        {1025, "1.1K"},
        {4096, "4.0K"},
        {10137, "9.9K"},
        {10138, "10K"},
        {10241, "11K"},
        {1023 * 1024, "1023K"},
        {1023 * 1024 + 1, "1.0M"},
        {12345678, "12M"},
        {1ULL << 40U, "1.0T"},
        {~0ULL, "16E"},
    };
    for (const auto& [bytes, text] : cases)
    {
        EXPECT_EQ(humanSize(bytes), text) << bytes;
    }
}

TEST(Sizes, CountsInWords)
{
    EXPECT_EQ(counted(0, "file"), "0 files");
    EXPECT_EQ(counted(1, "directory"), "1 directory");
    EXPECT_EQ(counted(2, "directory"), "2 directories");
}

TEST(Sizes, ShowsModesAsLsDoes)
{
    EXPECT_EQ(modeText(0770), "drwxrwx---");
    EXPECT_EQ(modeText(02770), "drwxrws---");
    EXPECT_EQ(modeText(02700), "drwx--S---");
    EXPECT_EQ(modeText(01777), "drwxrwxrwt");
    EXPECT_EQ(modeText(04644), "drwSr--r--");
}
