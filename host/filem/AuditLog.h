#pragma once

#include "staging/StagedTransaction.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zolhost::filem
{

/// Appends a line of JSON for each transaction with changes: who, when, what was staged, the outcome and the
/// comment. Several processes may append to one file.
class AuditLog
{
public:
    /// Without a file it notes nothing. Throws CommandFailure if the file can't be written.
    AuditLog(const std::optional<std::filesystem::path>& file, std::string rootDirectory);
    AuditLog(const AuditLog&) = delete;
    AuditLog& operator=(const AuditLog&) = delete;
    ~AuditLog();

    /// These two throw CommandFailure.
    void append(const std::vector<Request>& requests, const StagedTransaction::Outcome& outcome,
                const std::string& comment) const;
    void append(const std::vector<Request>& requests, const std::string& outcome) const;

private:
    std::string _rootDirectory;
    int _file = -1;
};

} // namespace zolhost::filem
