#pragma once

#include "FaultShim.h"
#include "Scenario.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace faults
{

/// What a run without a failure shows.
struct Reference
{
    std::array<unsigned long, faultshim::FUNCTIONS> calls{};
    faultshim::LiveBlocks blocks; ///< still allocated when all is over
    std::string problems;
};

enum class Effect
{
    None,   ///< nobody sees the failure, or in the log alone
    Stated, ///< another answer, message or change on disk, as the rules have it
    Died,   ///< the process has ended, as the rules have it
    Wrong
};

struct CaseResult
{
    Effect effect = Effect::Wrong;
    std::string problems;
};

// Each runs the scenario in a process of its own, forked from this one, which must have one thread.
Reference runUndisturbed(Surroundings& surroundings, const Scenario& scenario);
CaseResult runWith(const faultshim::Failure& failure, Surroundings& surroundings, const Scenario& scenario,
                   const Reference& reference);

} // namespace faults
