#pragma once

#include <map>
#include <vector>

namespace ZolFileManagement
{

/// Which transaction made an iterator. It knows the iterators of each transaction too, as the end of one
/// would look through those of all others otherwise.
class IteratorRegistry
{
public:
    /// An iterator that is known keeps its transaction.
    void insert(unsigned long long iteratorId, unsigned long txHandle);
    /// Null for an unknown iterator.
    const unsigned long* find(unsigned long long iteratorId) const;
    void eraseAllOf(unsigned long txHandle);

private:
    std::map<unsigned long long, unsigned long> _transactions;
    std::map<unsigned long, std::vector<unsigned long long>> _iterators;
};

} // namespace ZolFileManagement
