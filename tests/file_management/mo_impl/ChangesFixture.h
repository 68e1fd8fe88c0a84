#pragma once

#include "FileMTransaction.h"
#include "support/DistinguishedNames.h"
#include "support/FakeHost.h"
#include "support/RecordedLog.h"
#include "support/TemporaryTree.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>
#include <vector>

namespace zoltest
{

using Texts = std::vector<std::string>;

/// One worker on a tree of its own, behind a host.
class Changes : public ::testing::Test
{
protected:
    Changes();

    ZolReturnT create(const std::string& name, const std::string& parentDn = fileM);
    ZolReturnT deleteM(const std::string& dn) { return worker.deleteM(dn.c_str()); }

    /// The code and the result's value, e.g. "0 bool[true]". The result, which must be complete, is released.
    std::string action(const std::string& dn, const std::string& name,
                       QenMoNamedAttributeValueContainer_3** parameters);
    std::string remove(const std::string& dn);
    std::string removeFile(const std::string& dn, const std::string& expression);

    /// Commits, which must leave the tree as it is.
    void expectNothingWaits();

    /// The text of a directory of the tree as the worker has it: with a closing slash.
    std::string directoryText(const std::string& name) const { return tree.path(name) + "/"; }

    TemporaryTree tree;
    FakeHost host;
    ZolFileManagement::FileMTransaction worker;
};

/// The process's file creation mask, until the end of this object.
class FileCreationMask
{
public:
    explicit FileCreationMask(mode_t mask)
        : _previous(::umask(mask))
    {}
    FileCreationMask(const FileCreationMask&) = delete;
    FileCreationMask& operator=(const FileCreationMask&) = delete;
    ~FileCreationMask() { ::umask(_previous); }

private:
    mode_t _previous;
};

} // namespace zoltest
