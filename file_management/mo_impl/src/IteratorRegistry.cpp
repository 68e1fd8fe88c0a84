#include "IteratorRegistry.h"

namespace ZolFileManagement
{

void IteratorRegistry::insert(unsigned long long iteratorId, unsigned long txHandle)
{
    if (!_transactions.contains(iteratorId))
    {
        // in this order, so that none that is known escapes its transaction's end for lack of memory
        _iterators[txHandle].push_back(iteratorId);
        _transactions.insert({iteratorId, txHandle});
    }
}

const unsigned long* IteratorRegistry::find(unsigned long long iteratorId) const
{
    const auto found = _transactions.find(iteratorId);
    return found != _transactions.end() ? &found->second : nullptr;
}

void IteratorRegistry::eraseAllOf(unsigned long txHandle)
{
    if (const auto made = _iterators.extract(txHandle); !made.empty())
    {
        for (const unsigned long long iteratorId : made.mapped())
        {
            _transactions.erase(iteratorId);
        }
    }
}

} // namespace ZolFileManagement
