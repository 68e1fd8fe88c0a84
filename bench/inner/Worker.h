#pragma once

#include "FileMTransaction.h"

#include <filesystem>
#include <memory>
#include <string>

namespace zolbench
{

/// A worker as a joined transaction has it, with a root that holds one directory with one file.
class Worker
{
public:
    Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker();

    ZolFileManagement::FileMTransaction& operator*() { return *_transaction; }
    ZolFileManagement::FileMTransaction* operator->() { return _transaction.get(); }

    static const std::string directoryDn;

private:
    std::filesystem::path _root;
    std::unique_ptr<ZolFileManagement::FileMTransaction> _transaction;
};

} // namespace zolbench
