#pragma once

#include "FileMTransaction.h"
#include "support/FakeHost.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zoltest
{

using Texts = std::vector<std::string>;

inline const std::string fileM = "ManagedElement=1,SystemFunctions=1,FileM=1";

/// DN of a directory, below the root object or below another directory.
std::string groupDn(const std::string& value, const std::string& parentDn = fileM);
std::string fileDn(const std::string& value, const std::string& parentDn);

/// One worker on a tree of its own, with its answers as texts. All that it hands out is released.
class Reads : public ::testing::Test
{
protected:
    static constexpr unsigned long txHandle = 7;

    Reads();

    /// Throws if the iterator can't be had.
    unsigned long long newIterator(const std::string& parentDn, const std::string& className);
    /// The name, "end" for a null name or "code -2" and the like.
    std::string next(unsigned long long iteratorId);
    /// All names until the end.
    Texts children(const std::string& parentDn, const std::string& className);
    /// Throws if the result is not 0.
    unsigned long long count(const std::string& dn, const std::string& className);
    bool exists(const std::string& dn) { return worker.existsMo(dn.c_str()); }

    /// The value as toText gives it, or "code -2" and the like. A failure must leave both fields null.
    std::string attribute(const std::string& dn, const std::string& name);
    /// A text for each value, or just the code. A failure must leave both fields null.
    Texts attributes(const std::string& dn, const Texts& names);

    // Changes that wait for a commit. These throw if the result is not 0.
    void create(const std::string& name, const std::string& parentDn = fileM);
    void remove(const std::string& dn);
    void removeByForce(const std::string& dn); ///< by the action of that name

    TemporaryTree tree;
    FakeHost host;
    ZolFileManagement::FileMTransaction worker;
};

} // namespace zoltest
