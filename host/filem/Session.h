#pragma once

#include "engine/Host.h"
#include "engine/Place.h"
#include "filem/AuditLog.h"
#include "filem/Verb.h"
#include "filem/output/Colours.h"
#include "filem/output/ProgressLine.h"
#include "staging/Holdings.h"
#include "staging/PlaceFinder.h"
#include "staging/StagedTransaction.h"

#include <filesystem>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zolhost::filem
{

/// The commands of one operator. Changes wait in one transaction from the first that is staged to a commit or
/// an abort; what isn't committed at the end is aborted. For one thread at a time.
class Session
{
public:
    enum class Mode
    {
        Command, ///< one command, committed at once
        Script,
        Shell
    };
    struct Surroundings
    {
        Mode mode = Mode::Command;
        bool canAsk = false;        ///< there is somebody who answers questions
        bool showsProgress = false; ///< on standard error
        bool hasColours = false;
        std::optional<std::filesystem::path> audit = {};
    };

    /// Data goes to `out`, all else to `err`. Throws CommandFailure if the audit file can't be written.
    Session(Host& host, std::string rootDirectory, Surroundings surroundings, std::ostream& out,
            std::ostream& err);
    ~Session();

    /// Runs a verb with its arguments. Throws CommandFailure or Interrupted.
    ExitCode run(const Words& words);
    /// Where data goes from now on.
    void setOut(std::ostream& out) { _out = &out; }

    std::ostream& out() const { return *_out; }
    std::ostream& err() const { return _err; }
    /// For loops: throws Interrupted if the operator asked for it, and CommandFailure if nobody takes the
    /// data.
    void check() const;
    void warn(const std::string& text) const; ///< no control bytes in it
    Mode mode() const { return _surroundings.mode; }
    bool canAsk() const { return _surroundings.canAsk; }
    const Colours& colours() const { return _colours; }
    ProgressLine progress(const std::string& what) const { return {_surroundings.showsProgress, _err, what}; }

    const std::string& rootDirectory() const { return _here.rootDirectory(); }
    const Place& here() const { return _here; }
    void go(const Place& place) { _here = place; }
    Place place(const std::string& text, PlaceFinder::Wanted wanted = PlaceFinder::Wanted::Anything);

    /// What a read sees: the open transaction, or one for this command alone if nothing is staged.
    StagedTransaction& transaction();
    ManagedObjects objects() { return transaction().objects(); }
    const Plan& plan() { return transaction().plan(); }
    /// Between two reads of a long walk: gives back what the component keeps for them. The transaction of
    /// reads is another one then.
    void renewReads();
    bool hasStaged() const { return _transaction != nullptr && !_transaction->requests().empty(); }

    /// All of them or, if one is refused, none. Warns of expressions that match every file.
    void stage(const std::vector<Request>& requests, const Safeguards& safeguards);
    /// Commits what is staged, and notes it in the audit file. What failed can be staged again.
    StagedTransaction::Outcome commit(const std::string& comment);
    /// Drops what is staged. It can be staged again, unless it was a dry run.
    void abort(bool isDryRun = false);
    /// What was dropped last.
    const std::vector<Request>& dropped() const { return _dropped; }

    void quit() { _isOver = true; }
    void stay() { _isOver = false; } ///< after all
    bool isOver() const { return _isOver; }

private:
    void showMessages() const;
    ExitCode runVerb(const VerbDescription& description, const Words& arguments);

    Host& _host;
    Surroundings _surroundings;
    std::ostream* _out;
    std::ostream& _err;
    Colours _colours;
    AuditLog _audit;
    Holdings _holdings;
    Place _here;
    std::unique_ptr<StagedTransaction> _transaction; // null: none has begun
    std::vector<Request> _dropped;
    bool _isOver = false;
};

} // namespace zolhost::filem
