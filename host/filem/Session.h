#pragma once

#include "engine/Host.h"
#include "engine/ManagedObjects.h"
#include "engine/Transaction.h"
#include "filem/Commands.h"
#include "filem/ExitCode.h"

#include <iosfwd>
#include <memory>

namespace zolhost::filem
{

/// Commands of one operator, in one transaction from each commit or abort to the next. What isn't committed
/// at the end is aborted. For one thread.
class Session
{
public:
    /// Data goes to `out`, all else to `err`.
    Session(Host& host, std::ostream& out, std::ostream& err);

    /// Runs a command with its arguments. Throws CommandFailure.
    ExitCode run(const Words& words);

    // For commands.
    ManagedObjects objects(); ///< of the transaction, which begins here if there is none
    std::ostream& out() { return _out; }
    void commit();
    void abort();
    void quit() { _isOver = true; }

    bool hasChanges() const { return _hasChanges; } ///< that wait for a commit
    bool isOver() const { return _isOver; }

private:
    void showMessages();

    Host& _host;
    std::ostream& _out;
    std::ostream& _err;
    std::unique_ptr<Transaction> _transaction; // null: none has begun
    bool _hasChanges = false;
    bool _isOver = false;
};

} // namespace zolhost::filem
