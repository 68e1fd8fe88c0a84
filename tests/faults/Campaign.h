#pragma once

#include "CaseRun.h"

#include <functional>
#include <string>
#include <vector>

namespace faults
{

/// What came of all failures of a function in a scenario, or in several.
struct Tally
{
    unsigned long calls = 0; ///< without a failure
    unsigned long cases = 0;
    unsigned long unseen = 0; ///< see Effect
    unsigned long stated = 0;
    unsigned long died = 0;
    std::string problems;

    Tally& operator+=(const Tally& other);
};

/// Each call of the function that the scenario makes, with each error of it.
Tally failEachCall(faultshim::Function function, Surroundings& surroundings, const Scenario& scenario,
                   const Reference& reference);

/// The tables of docs/testing.md. Not 0 if anything is wrong.
int printTable();

/// Whether commits are to be killed at every call, and not only around those that change something.
extern bool killAtEveryCall;

} // namespace faults
