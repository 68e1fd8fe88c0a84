#include "report/Outcome.h"

#include <gmock/gmock.h>

namespace
{

using namespace zolbench;
using testing::ElementsAre;
using testing::IsEmpty;

const Goal goal{1.0, 1.3, 0.45};

Outcome outcomeOf(const CallsByWay& calls, double library, double strict, double sftp)
{
    const Times times{{"library", {library}}, {"strict", {strict}}, {"sftp", {sftp}}};
    return {"browse", 1000, {times, times}, calls, goal};
}

} // namespace

TEST(Outcome, HoldsWithEachFigureAtItsGoal)
{
    EXPECT_THAT(failedGoals(outcomeOf({{"library", 1.0}}, 130, 100, 289)), IsEmpty());
}

TEST(Outcome, TellsEachGoalThatItMisses)
{
    EXPECT_THAT(failedGoals(outcomeOf({{"library", 1.01}}, 130, 100, 289)), ElementsAre("calls"));
    EXPECT_THAT(failedGoals(outcomeOf({{"library", 1.0}}, 131, 100, 300)), ElementsAre("strict"));
    EXPECT_THAT(failedGoals(outcomeOf({{"library", 1.0}}, 130, 100, 280)), ElementsAre("sftp"));
}

TEST(Outcome, DoesNotHoldWhereSystemCallsWereNotCounted)
{
    EXPECT_THAT(failedGoals(outcomeOf({}, 130, 100, 289)), ElementsAre("calls"));
}
