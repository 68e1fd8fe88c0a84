#include "Campaign.h"
#include "FaultShim.h"
#include "ManyChanges.h"
#include "Surroundings.h"
#include "support/ChildProcess.h"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <gtest/gtest.h>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>
#include <vector>
#include <zol/common/LoggingWrapper.h>

using faults::Texts;
using faultshim::Kill;
using zoltest::ChildOutcome;

namespace
{

bool changesTheDisk(const std::string& function)
{
    const Texts changing = {"mkdir", "chmod", "unlink", "unlinkat", "rmdir", "remove"};
    return std::find(changing.begin(), changing.end(), function) != changing.end();
}

class KilledCommit : public testing::Test
{
protected:
    KilledCommit()
    {
        Zol::LoggingWrapper::instance().set_level(0); // traces take most of the time
        changes.build(surroundings);
        before = surroundings.snapshot();
        staged = surroundings.transaction(1);
        staged->join();
        refused = changes.request(*staged);
    }

    /// What this process has asked for, committed by another one, which begins like this one.
    ChildOutcome commitInAProcess(const Kill& kill) const
    {
        return zoltest::runInChild([&] {
            faultshim::plan(kill);
            const faultshim::Armed armed;
            return staged->commit() == 0 ? 0 : 1;
        });
    }

    /// All of it from the beginning, in another process. It says which functions its commit called.
    ChildOutcome changeInAProcess() const
    {
        return zoltest::runInChild([&] {
            const auto transaction = surroundings.transaction(2);
            transaction->join();
            const std::string problems = changes.request(*transaction);
            faultshim::plan();
            ZolReturnT code = 0;
            {
                const faultshim::Armed armed;
                code = transaction->commit();
            }
            transaction->finish();
            for (std::size_t i = 0; i < faultshim::callCount(); ++i)
            {
                std::fprintf(stderr, "%s ", faultshim::nameOf(faultshim::call(i).function));
            }
            std::fputs(problems.c_str(), stderr);
            return problems.empty() && code == 0 ? 0 : 1;
        });
    }

    std::vector<std::string> callsOfTheWhole()
    {
        const ChildOutcome whole = changeInAProcess();
        EXPECT_EQ(whole.exitStatus, 0) << whole.standardError;
        completed = surroundings.snapshot();
        std::istringstream names(whole.standardError);
        return {std::istream_iterator<std::string>(names), {}};
    }

    void killAndComplete(const Kill& kill)
    {
        changes.build(surroundings);
        EXPECT_EQ(commitInAProcess(kill).signal, SIGKILL);
        EXPECT_EQ(changes.judge(before, surroundings.snapshot()), "");
        const ChildOutcome again = changeInAProcess();
        EXPECT_EQ(again.exitStatus, 0) << again.standardError;
        EXPECT_EQ(surroundings.snapshot(), completed);
    }

    faults::Surroundings surroundings;
    faults::ManyChanges changes;
    std::unique_ptr<zoltest::Transaction> staged;
    std::string refused;
    Texts before;
    Texts completed;
};

} // namespace

// What stands after a call stands before the next one, too: each state is that before a call, or the last
// one.
TEST_F(KilledCommit, LeavesEachChangeWholeOrUndoneAndANewProcessCompletesIt)
{
    ASSERT_EQ(changes.size(), 200);
    ASSERT_EQ(refused, "");
    const std::vector<std::string> calls = callsOfTheWhole();
    ASSERT_EQ(changes.judge(before, completed), "");

    // an odd step, as calls of two kinds take turns
    const std::ptrdiff_t step = faults::killAtEveryCall ? 1 : 3;
    std::ptrdiff_t candidates = 0;
    unsigned long kills = 0;
    for (unsigned long number = 1; number <= calls.size() && !HasFailure(); ++number)
    {
        const bool isCandidate = faults::killAtEveryCall || changesTheDisk(calls[number - 1]);
        if (isCandidate && candidates++ % step == 0)
        {
            SCOPED_TRACE("before call " + std::to_string(number) + ", " + calls[number - 1]);
            killAndComplete({number, false});
            ++kills;
        }
    }
    killAndComplete({calls.size(), true});
    std::printf("%zu calls, %lu kills\n", calls.size(), kills + 1);
}
