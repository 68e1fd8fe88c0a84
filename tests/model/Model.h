#pragma once

#include "model/Operation.h"
#include "model/Outcome.h"
#include "model/Worker.h"
#include "model/World.h"

#include <map>
#include <memory>

namespace zolmodel
{

/// The component as the rules describe it: the registry of transactions and iterators in front of the
/// workers.
class Model
{
public:
    /// Handles of the host begin at `firstHandle`.
    Model(World& world, unsigned long firstHandle);

    /// What the host must see. Throws OutOfReach, with nothing changed, if the operation is not to be done.
    Outcome expect(const Operation& operation);

    /// Whether others can do that to the disk as it is. If so, it is done.
    bool change(const Operation& operation);

    /// The id behind a label, or one that no iterator has.
    unsigned long long iteratorId(unsigned label) const;
    bool isJoined(unsigned transaction) const { return worker(transaction) != nullptr; }
    unsigned long handle(unsigned transaction) const { return _firstHandle + transaction; }
    const World& world() const { return _world; }

private:
    Worker* worker(unsigned transaction) const;
    void expectOfTransaction(const Operation& operation, Outcome& outcome);
    void expectOfObjects(const Operation& operation, Worker* found, Outcome& outcome);
    void join(const Operation& operation, Outcome& outcome);
    void next(const Operation& operation, Outcome& outcome);
    void forgetIterators(unsigned transaction);

    World& _world;
    unsigned long _firstHandle;
    std::map<unsigned, std::unique_ptr<Worker>> _workers;
    std::map<unsigned long long, unsigned> _iterators; ///< the transaction of each id
    std::map<unsigned, unsigned long long> _labels;
};

} // namespace zolmodel
