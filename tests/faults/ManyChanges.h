#pragma once

#include "Surroundings.h"

#include <string>
#include <vector>

namespace faults
{

/// Two hundred changes of one transaction, on a tree that they leave parts of alone: files that go,
/// directories that are made, in each other and below parents with and without the set-group-ID bit, and
/// trees that go, by deleteMo without files and by the action remove with them.
class ManyChanges
{
public:
    ManyChanges();

    void build(const Surroundings& surroundings) const;
    /// Empty, or what a request gave that it may not give. What an earlier process did is no longer there to
    /// be deleted.
    std::string request(zoltest::Transaction& transaction) const;

    /// Empty, or what is wrong with a state of the tree that a process left behind. A commit goes through the
    /// changes in one order, so it is at one of them: those before it are done, and those behind it aren't
    /// begun.
    std::string judge(const Texts& before, const Texts& after) const;

    std::size_t size() const { return _files.size() + _directories.size() + _trees.size(); }

private:
    // in the order of the commit
    Texts _files;
    Texts _directories;
    Texts _trees;
};

} // namespace faults
