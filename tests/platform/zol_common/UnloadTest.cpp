#include "LibraryProcess.h"

#include <gtest/gtest.h>

namespace
{

// Under LeakSanitizer this also shows that nothing is left of the log.
TEST(Unload, TakesTheCompanionLibraryAwayWithItsLastUser)
{
    const auto outcome = zoltest::runLibrary({.function = "useEverything", .end = "unload"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.standardError;
}

TEST(Unload, IsNotNeededBeforeTheProcessEnds)
{
    const auto outcome = zoltest::runLibrary({.function = "useEverything", .end = "exit"});
    EXPECT_EQ(outcome.exitStatus, 0) << outcome.standardError;
}

} // namespace
