#pragma once

#include "filem/ExitCode.h"
#include "staging/StagedTransaction.h"

#include <string>

namespace zolhost::filem
{

class Session;

struct ReceiptForm
{
    bool isJson = false;
    bool isWhole = true; ///< else only what remains is told, on standard error
};

/// Commits what is staged and prints what became of it.
ExitCode commitAndTell(Session& session, const std::string& comment, ReceiptForm form);

} // namespace zolhost::filem
