#pragma once

#include "support/ChildProcess.h"

#include <string>

namespace zoltest
{

/// What the C library reported about a failed assertion, without program and line.
struct FailedAssertion
{
    std::string file;
    std::string function;
    std::string expression;

    bool operator==(const FailedAssertion&) const = default;
};

/// Empty fields unless the child ended at an assertion.
FailedAssertion failedAssertion(const ChildOutcome& outcome);

} // namespace zoltest
