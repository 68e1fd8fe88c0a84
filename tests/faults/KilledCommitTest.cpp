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
#include <optional>
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

constexpr unsigned long HANDLE = 42;

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
    }

    /// Everything from join to finish, in a process that begins like this one. It says which functions its
    /// commit called, or what went wrong.
    ChildOutcome commitInAProcess(const std::optional<Kill>& kill) const
    {
        return zoltest::runInChild([&] {
            const auto transaction = surroundings.transaction(HANDLE);
            transaction->join();
            const std::string refused = changes.request(*transaction);
            if (kill)
            {
                faultshim::plan(*kill);
            }
            else
            {
                faultshim::plan();
            }
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
            std::fputs(refused.c_str(), stderr);
            return refused.empty() && code == 0 ? 0 : 1;
        });
    }

    std::vector<std::string> callsOfTheWhole()
    {
        const ChildOutcome whole = commitInAProcess(std::nullopt);
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
        const ChildOutcome again = commitInAProcess(std::nullopt);
        EXPECT_EQ(again.exitStatus, 0) << again.standardError;
        EXPECT_EQ(surroundings.snapshot(), completed);
    }

    faults::Surroundings surroundings;
    faults::ManyChanges changes;
    Texts before;
    Texts completed;
};

} // namespace

TEST_F(KilledCommit, LeavesEachChangeWholeOrUndoneAndANewProcessCompletesIt)
{
    ASSERT_EQ(changes.size(), 200);
    const std::vector<std::string> calls = callsOfTheWhole();
    EXPECT_EQ(changes.judge(before, completed), "");
    unsigned long kills = 0;
    for (unsigned long number = 1; number <= calls.size(); ++number)
    {
        const std::string& function = calls[number - 1];
        if (!changesTheDisk(function) && !faults::killAtEveryCall)
        {
            continue;
        }
        SCOPED_TRACE("call " + std::to_string(number) + ", " + function);
        killAndComplete({number, false});
        ++kills;
        // what stands after a call stands before the next one, too
        if (faults::killAtEveryCall || number == calls.size())
        {
            killAndComplete({number, true});
            ++kills;
        }
        if (HasFailure())
        {
            return;
        }
    }
    std::printf("%zu calls, %lu kills\n", calls.size(), kills);
}
