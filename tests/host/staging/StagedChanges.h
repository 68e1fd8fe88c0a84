#pragma once

#include "engine/Host.h"
#include "staging/Plan.h"
#include "staging/Preview.h"
#include "support/TemporaryTree.h"

#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

namespace zoltest
{

/// The file-creation mask of the process until the end of its life.
class ScopedMask
{
public:
    explicit ScopedMask(mode_t mask);
    ScopedMask(const ScopedMask&) = delete;
    ScopedMask& operator=(const ScopedMask&) = delete;
    ~ScopedMask();

private:
    mode_t _previous;
};

/// Changes of one transaction of the real component on a tree, and the plan that mirrors them. Names are
/// relative to the tree and have no closing slash.
class StagedChanges
{
public:
    explicit StagedChanges(const TemporaryTree& tree);

    /// Each throws zolhost::Refusal if the component refuses it; the plan stays then.
    void makeDirectory(const std::string& name);
    void removeDirectory(const std::string& name);
    void removeTree(const std::string& name);
    void removeFile(const std::string& name);
    /// The action `remove` for a file, which must not be in the tree's folder itself.
    void removeFileAsTree(const std::string& name);

    const zolhost::Plan& plan() const { return _plan; }
    zolhost::Preview preview() const { return zolhost::previewOf(_plan); }
    /// Whether the component says that all is well.
    bool commit();

private:
    std::string _root;
    zolhost::Host _host;
    std::unique_ptr<zolhost::Transaction> _transaction;
    zolhost::Plan _plan;
};

/// A folder as "." and all that is below it by its path relative to it: kind, mode, size or target. Links
/// aren't followed.
using Snapshot = std::map<std::string, std::string>;
Snapshot snapshotOf(const std::string& root);

/// What a preview makes of a snapshot.
class Expectation
{
public:
    /// To be made before the commit,
    Expectation(const zolhost::Preview& preview, const std::string& root);
    /// and to be asked after it, when the paths of what is made lead where they should.
    Snapshot after() const;

private:
    std::vector<zolhost::Preview::Made> _made;
    std::string _root;
    Snapshot _snapshot; // without what is removed
};

/// Runs the function in a child that root's rights don't help and that owns the tree's folder. Whether all of
/// its expectations were met.
bool holdsForOrdinaryUser(const TemporaryTree& tree, const std::function<void()>& function);

} // namespace zoltest
