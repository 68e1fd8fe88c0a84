#pragma once

#include "engine/Component.h"
#include "engine/ManagedObjects.h"
#include "engine/PolicyRepository.h"
#include "engine/Portal.h"
#include "engine/Transaction.h"
#include "engine/TransactionService.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace zolhost
{

/// A host with one component, at its service from the constructor to the end. A process has one at a time,
/// and it outlives its transactions. Any thread may work with a transaction of its own.
class Host
{
public:
    struct Setup
    {
        std::filesystem::path library;
        std::string configuration; ///< as the library takes it: the text of a document or the path of one
        std::vector<FileGroupPolicy> policies;
    };

    /// Where the library stands beside this program.
    static std::filesystem::path defaultLibrary();

    /// Throws HostFailure.
    explicit Host(const Setup& setup);

    /// Throws Refusal.
    std::unique_ptr<Transaction> begin();
    ManagedObjects objects(const Transaction& transaction) const;

private:
    TransactionService _transactions;
    Portal _portal;
    PolicyRepository _repository;
    Component _component;
};

} // namespace zolhost
