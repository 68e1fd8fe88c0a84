#pragma once

#include "FileMTransaction.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace zoltest
{

using Texts = std::vector<std::string>;

/// Walks of one tree with the changes of a transaction. What they yield is told by its text relative to the
/// tree: a directory with a slash behind it, a file without one.
class Walk : public ::testing::Test
{
protected:
    using Iterator = ZolFileManagement::FileMTransaction::FileGroupIterator;

    static constexpr bool files = true;
    static constexpr bool directories = false;

    Poco::Path directory(const std::string& name = "") const;
    Poco::Path file(const std::string& name) const;

    Iterator open(const std::string& name, bool iterateFiles) const
    {
        return {directory(name), changes, iterateFiles};
    }
    /// One step: the text, or "end".
    std::string step(Iterator& iterator) const;
    /// All steps until the end.
    Texts rest(Iterator& iterator) const;
    Texts filesIn(const std::string& name = "") const;
    Texts directoriesIn(const std::string& name = "") const;

    TemporaryTree tree;
    ZolFileManagement::FileMTransaction::NonComittedData changes;
};

} // namespace zoltest
