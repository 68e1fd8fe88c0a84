#pragma once

#include "model/Model.h"
#include "model/Operation.h"
#include "model/Sandbox.h"
#include "model/Subject.h"
#include "model/World.h"

#include <optional>
#include <string>
#include <vector>

namespace zolmodel
{

/// Policies that refer to some directories, and what the external command prints.
Surroundings surroundingsOfComparison();

/// Model and component side by side on a fresh tree.
class Comparison
{
public:
    /// Each comparison of a process has a number of its own, and begins with the last id of the one before.
    Comparison(Subject& subject, const Sandbox& sandbox, unsigned long number,
               unsigned long long lastIteratorId, Mistake mistake);

    /// Does it on both sides. Tells what was expected and what came, if that is not the same.
    std::optional<std::string> step(const Operation& operation);

    /// Ends what is still open, and looks at the disk once more.
    std::optional<std::string> finish();

    const Model& model() const { return _model; }
    unsigned skipped() const { return _skipped; } ///< operations that were out of reach

private:
    std::optional<std::string> stepOfHost(const Operation& operation);

    Subject& _subject;
    const Sandbox& _sandbox;
    World _world;
    Model _model;
    unsigned _skipped = 0;
    std::vector<unsigned> _joined;
};

} // namespace zolmodel
