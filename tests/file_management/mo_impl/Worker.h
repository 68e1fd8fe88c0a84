#pragma once

#include "FileMTransaction.h"

#include "support/FakeHost.h"

#include <string>

namespace zoltest
{

/// A transaction's worker on an internal root, with its host.
struct Worker
{
    explicit Worker(const std::string& internalRoot, unsigned long txHandle = 7)
        : transaction(txHandle, *host.portal1())
    {
        ZolFileManagement::FileMTransaction::initialize(internalRoot);
    }

    FakeHost host;
    ZolFileManagement::FileMTransaction transaction;
};

} // namespace zoltest
