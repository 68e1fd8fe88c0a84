#pragma once

#include "model/Model.h"
#include "model/Operation.h"
#include "model/Sandbox.h"
#include "model/Subject.h"
#include "model/World.h"

#include <array>
#include <optional>
#include <set>
#include <string>

namespace zolmodel
{

/// How often each operation of the host was compared, by its code.
struct Tally
{
    static constexpr std::array<ZolReturnT, 5> CODES = {0, -1, -2, -8, 7};
    std::array<std::array<unsigned long, CODES.size()>, static_cast<std::size_t>(Does::LAST) + 1> counts;

    void note(Does does, ZolReturnT code);
};

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
    void tallyIn(Tally* tally) { _tally = tally; }

private:
    std::optional<std::string> stepOfHost(const Operation& operation);

    Subject& _subject;
    const Sandbox& _sandbox;
    World _world;
    Model _model;
    unsigned _skipped = 0;
    Tally* _tally = nullptr;
    std::set<unsigned> _joined;
};

} // namespace zolmodel
