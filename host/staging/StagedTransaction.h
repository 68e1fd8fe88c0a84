#pragma once

#include "engine/Host.h"
#include "staging/Baseline.h"
#include "staging/Holdings.h"
#include "staging/Plan.h"
#include "staging/Preview.h"
#include "staging/Progress.h"
#include "staging/Receipt.h"
#include "staging/Request.h"

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace zolhost
{

/// A transaction of a component with what the host knows of it: what was asked for, what that will do and, at
/// the end, what it did. For one thread.
class StagedTransaction
{
public:
    /// Both outlive it. Throws Refusal.
    StagedTransaction(Host& host, Holdings& holdings);
    StagedTransaction(const StagedTransaction&) = delete;
    StagedTransaction& operator=(const StagedTransaction&) = delete;
    ~StagedTransaction();

    unsigned long handle() const { return _handle; }
    ManagedObjects objects() const { return _host.objects(*_transaction); }
    const Plan& plan() const { return _plan; }
    const std::vector<Request>& requests() const { return _requests; }

    struct Staged
    {
        std::size_t matched = 0; ///< files that an expression takes
        bool matchedAll = false; ///< all visible files of the directory, of which there is one
    };
    /// Asks the component. Throws Refusal, and then nothing of it is staged.
    Staged stage(const Request& request, const Safeguards& safeguards = {}, const Progress& progress = {});

    /// As if only the first of the requests had been staged.
    void takeBackTo(std::size_t count);

    Preview preview(const Progress& progress = {}) const { return previewOf(_plan, progress); }
    std::vector<Baseline::Drift> drift(const Progress& progress = {}) const
    {
        return _baseline.drift(progress);
    }
    struct HeldElsewhere
    {
        std::string path;
        std::vector<unsigned long> txHandles;
    };
    /// What other open transactions of this process hold too.
    std::vector<HeldElsewhere> heldElsewhere() const;

    struct Outcome
    {
        Preview preview; ///< as of right before the commit
        Receipt receipt;
        std::string failure; ///< what the component said; empty if it said that all is well
        std::chrono::duration<double> time{};
    };
    /// The transaction is over then.
    Outcome commit(const Progress& progress = {});

private:
    void ask(const Request& request) const;
    void note(const Request& request, const Matches& matches, const Progress& progress);
    void askToRemoveFile(const Place& place) const;
    void remember(const std::string& path, const Progress& progress);
    void forgetCancelled();

    Host& _host;
    Holdings& _holdings;
    std::unique_ptr<Transaction> _transaction;
    unsigned long _handle;
    Plan _plan;
    Baseline _baseline;
    std::vector<Request> _requests; // that were accepted
    std::size_t _cancelledSeen = 0; // of the plan's
};

} // namespace zolhost
