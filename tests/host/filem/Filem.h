#pragma once

#include "support/Process.h"
#include "support/TemporaryTree.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

/// Runs the program `filem` on a tree of the test's own, without a log.
class Filem : public testing::Test
{
protected:
    using Texts = std::vector<std::string>;
    using Outcome = zoltest::ProcessOutcome;

    /// With arguments alone, not even a root.
    static Outcome run(const Texts& arguments, zoltest::ProcessSurroundings surroundings = {});

    /// One command on the tree.
    Outcome filem(const Texts& command) const;

    /// Commands on the tree, from standard input.
    Outcome script(const std::string& lines) const;

    /// The time of a file as it is shown.
    std::string timeOf(const std::string& name) const;

    static std::string failure(const std::string& command, const std::string& dn, const std::string& why);
    /// There is no such object.
    static Outcome missing(const std::string& command, const std::string& dnBelowRoot);

    static inline const std::string root = "ManagedElement=1,SystemFunctions=1,FileM=1";

    zoltest::TemporaryTree tree;
};
