#include "support/FailedAssertion.h"

#include <csignal>
#include <regex>

namespace zoltest
{

FailedAssertion failedAssertion(const ChildOutcome& outcome)
{
    static const std::regex report(
        "(?:^|\n)[^\n]*?: ([^\n:]*):[0-9]+: ([^\n]*): Assertion `([^\n]*)' failed\\.\n");
    std::smatch found;
    if (outcome.signal != SIGABRT || !std::regex_search(outcome.standardError, found, report))
    {
        return {};
    }
    return {found[1], found[2], found[3]};
}

} // namespace zoltest
