#include "filem/Session.h"

#include "engine/Refusal.h"
#include "engine/ThreadContext.h"
#include "filem/output/CommitSignals.h"
#include "filem/output/Interrupt.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Quoting.h"
#include "filem/output/Terminal.h"

#include <algorithm>
#include <ostream>
#include <unistd.h>
#include <utility>

namespace zolhost::filem
{

namespace
{

ExitCode exitCodeOf(Refusal::Kind kind)
{
    switch (kind)
    {
    case Refusal::Kind::BadName:
        return ExitCode::Usage;
    case Refusal::Kind::NoSuchObject:
        return ExitCode::NoSuchObject;
    case Refusal::Kind::Failed:
        break;
    }
    return ExitCode::Failed;
}

CommandFailure failureOf(const VerbDescription& verb, const Refusal& refusal)
{
    const std::string where = refusal.dn().empty() ? "" : ", on " + quotedIfNeeded(refusal.dn());
    return {exitCodeOf(refusal.kind()),
            "can't " + std::string(verb.name) + where + ": " + printable(refusal.what())};
}

} // namespace

Session::Session(Host& host, std::string rootDirectory, Surroundings surroundings, std::ostream& out,
                 std::ostream& err)
    : _host(host)
    , _surroundings(std::move(surroundings))
    , _out(&out)
    , _err(err)
    , _colours(_surroundings.hasColours)
    , _audit(_surroundings.audit, rootDirectory)
    , _here(std::move(rootDirectory))
{}

Session::~Session()
{
    try
    {
        abort();
    }
    catch (const CommandFailure& failure)
    {
        warn(failure.what());
    }
}

ExitCode Session::run(const Words& words)
{
    const VerbDescription* const verb = findVerb(words.front());
    if (verb == nullptr)
    {
        throw CommandFailure(ExitCode::Usage,
                             "there is no command " + printable(words.front()) + ", see help");
    }
    try
    {
        const ExitCode code = runVerb(*verb, {words.begin() + 1, words.end()});
        showMessages();
        renewReads();
        return code;
    }
    catch (const Refusal& refusal)
    {
        throw failureOf(*verb, refusal);
    }
}

ExitCode Session::runVerb(const VerbDescription& description, const Words& arguments)
{
    const auto verb = description.make();
    if (parseArguments(description, *verb, arguments, out()))
    {
        return ExitCode::Done;
    }
    return verb->run(*this);
}

void Session::check() const
{
    interrupt::check();
    if (!out() && terminal::isReaderGone(STDOUT_FILENO))
    {
        // whoever reads has enough
        throw Interrupted();
    }
    if (!out())
    {
        throw CommandFailure(ExitCode::Failed, "standard output can't be written");
    }
}

void Session::warn(const std::string& text) const
{
    out().flush();
    _err << "filem: " << text << '\n' << std::flush;
}

Place Session::place(const std::string& text, PlaceFinder::Wanted wanted)
{
    return PlaceFinder(rootDirectory(), plan()).find(text, _here, wanted);
}

StagedTransaction& Session::transaction()
{
    if (_transaction == nullptr)
    {
        _transaction = std::make_unique<StagedTransaction>(_host, _holdings);
    }
    return *_transaction;
}

/// A component keeps what it gave to a transaction until the transaction ends.
void Session::renewReads()
{
    if (!hasStaged())
    {
        _transaction.reset();
    }
}

void Session::stage(const std::vector<Request>& requests, const Safeguards& safeguards)
{
    auto progress = this->progress("staging");
    const std::size_t before = transaction().requests().size();
    try
    {
        std::size_t done = 0;
        for (const auto& request : requests)
        {
            const auto staged = _transaction->stage(request, safeguards, progress.function());
            if (staged.matchedAll)
            {
                warn("the expression matches every file of " + quotedIfNeeded(request.place.dn()));
            }
            progress.at(++done);
        }
    }
    catch (const std::exception&)
    {
        _transaction->takeBackTo(before);
        throw;
    }
}

StagedTransaction::Outcome Session::commit(const std::string& comment)
{
    auto progress = this->progress("commit");
    progress.mustNotStop();
    const CommitSignals signals;
    // from here on nothing gives up on it
    interrupt::check();
    const auto transaction = std::move(_transaction);
    auto outcome = transaction->commit(progress.function());
    progress.clear();
    if (!outcome.failure.empty())
    {
        _dropped = transaction->requests();
    }
    try
    {
        _audit.append(transaction->requests(), outcome, comment);
    }
    catch (const CommandFailure& failure)
    {
        // what was done is told all the same
        warn(failure.what());
    }
    return outcome;
}

void Session::abort(bool isDryRun)
{
    const auto transaction = std::move(_transaction);
    if (transaction != nullptr && !transaction->requests().empty())
    {
        if (!isDryRun)
        {
            _dropped = transaction->requests();
        }
        _audit.append(transaction->requests(), isDryRun ? "dry run" : "aborted");
    }
}

/// What the component had to say although it did what was asked.
void Session::showMessages() const
{
    for (const auto& message : ThreadContext::take())
    {
        warn(printable(message));
    }
}

} // namespace zolhost::filem
