#include "filem/output/Totals.h"

#include <gtest/gtest.h>

using namespace zolhost::filem;

TEST(Totals, LeaveOutWhatIsZero)
{
    EXPECT_EQ(textOf({}, Tense::Past), "");
    EXPECT_EQ(textOf({.directoriesMade = 1}, Tense::Past), "1 directory made");
    EXPECT_EQ(textOf({.modesSet = 2, .filesRemoved = 1, .bytesRemoved = 1024}, Tense::Past),
              "2 modes set, 1 file (1.0K) removed");
    EXPECT_EQ(textOf({.directoriesMade = 2,
                      .filesRemoved = 3,
                      .directoriesRemoved = 1,
                      .othersRemoved = 4,
                      .bytesRemoved = 5},
                     Tense::Future),
              "2 directories to be made, 3 files (5), 1 directory and 4 other entries to be removed");
}
