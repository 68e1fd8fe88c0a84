#include "staging/StagedTransaction.h"

#include "engine/Refusal.h"
#include "staging/Expression.h"

#include <set>

namespace zolhost
{

namespace
{

using Kind = Request::Kind;

/// An extended regular expression that this text alone matches.
std::string literally(const std::string& text)
{
    std::string expression;
    for (const char character : text)
    {
        if (std::string_view("\\^$.[]|()?*+{}").find(character) != std::string_view::npos)
        {
            expression += '\\';
        }
        expression += character;
    }
    return expression;
}

bool isIn(const Plan& plan, const std::string& path)
{
    return plan.madeDirectories().contains(path) || plan.removedTrees().contains(path) ||
           plan.removedFiles().contains(path);
}

std::set<std::string> pathsOf(const Plan& plan)
{
    std::set<std::string> paths = plan.madeDirectories();
    paths.insert(plan.removedTrees().begin(), plan.removedTrees().end());
    paths.insert(plan.removedFiles().begin(), plan.removedFiles().end());
    return paths;
}

} // namespace

StagedTransaction::StagedTransaction(Host& host, Holdings& holdings)
    : _host(host)
    , _holdings(holdings)
    , _transaction(host.begin())
    , _handle(_transaction->handle())
{}

StagedTransaction::~StagedTransaction()
{
    _holdings.removeAll(_handle);
}

StagedTransaction::Staged StagedTransaction::stage(const Request& request, const Safeguards& safeguards,
                                                   const Progress& progress)
{
    vet(request, _plan, safeguards);
    const std::string path = request.place.path();
    Staged staged;
    Matches matches;
    if (request.kind == Kind::RemoveMatching)
    {
        matches = matchesOf(request.place, request.expression, _plan);
        staged = {matches.names.size(), !matches.names.empty() && matches.names.size() == matches.visible};
    }
    try
    {
        ask(request);
    }
    catch (const Refusal& refusal)
    {
        const std::string reason = refusal.isSilent() ? reasonAgainst(request, _plan) : "";
        throw Refusal(refusal.kind(), request.place.dn(), reason.empty() ? refusal.what() : reason);
    }
    _requests.push_back(request);
    note(request, matches, progress);
    return staged;
}

void StagedTransaction::takeBackTo(std::size_t count)
{
    if (count == _requests.size())
    {
        return;
    }
    const auto kept = std::vector(_requests.begin(), _requests.begin() + static_cast<std::ptrdiff_t>(count));
    const auto before = pathsOf(_plan);
    _holdings.removeAll(_handle);
    _transaction = _host.begin();
    _handle = _transaction->handle();
    _plan.clear();
    _cancelledSeen = 0;
    _requests.clear();
    for (const auto& request : kept)
    {
        const Matches matches = request.kind == Kind::RemoveMatching
                                    ? matchesOf(request.place, request.expression, _plan)
                                    : Matches{};
        ask(request);
        _requests.push_back(request);
        note(request, matches, {});
    }
    for (const auto& path : before)
    {
        if (!isIn(_plan, path))
        {
            _baseline.forget(path);
        }
    }
}

void StagedTransaction::note(const Request& request, const Matches& matches, const Progress& progress)
{
    const std::string path = request.place.path();
    switch (request.kind)
    {
    case Kind::MakeDirectory:
        _plan.makeDirectory(path);
        break;
    case Kind::RemoveDirectory:
        _plan.removeDirectory(path);
        break;
    case Kind::RemoveTree:
        _plan.removeTree(path);
        break;
    case Kind::RemoveFile:
        _plan.removeFile(path);
        break;
    case Kind::RemoveMatching:
        for (const auto& name : matches.names)
        {
            _plan.removeFile(path + name);
            remember(path + name, progress);
        }
        return;
    }
    remember(path, progress);
    forgetCancelled();
}

void StagedTransaction::ask(const Request& request) const
{
    const Place& place = request.place;
    const ManagedObjects objects = this->objects();
    switch (request.kind)
    {
    case Kind::MakeDirectory:
        objects.create(place.parent().dn(), std::string(place.moClass().name),
                       std::string(place.moClass().keyAttribute), place.name());
        break;
    case Kind::RemoveDirectory:
        objects.deleteObject(place.dn());
        break;
    case Kind::RemoveTree:
        objects.remove(place.dn());
        break;
    case Kind::RemoveFile:
        askToRemoveFile(place);
        break;
    case Kind::RemoveMatching:
        objects.removeFile(place.dn(), forWholeName(request.expression));
        break;
    }
}

/// A name that the component would take for another is told by an expression that it alone matches.
void StagedTransaction::askToRemoveFile(const Place& place) const
{
    if (place.isReachableToDelete())
    {
        objects().deleteObject(place.dn());
        return;
    }
    if (!objects().removeFile(place.parent().dn(), literally(place.name())))
    {
        throw Refusal(Refusal::Kind::Failed, place.dn(), "the component doesn't take it for a file", true);
    }
}

void StagedTransaction::remember(const std::string& path, const Progress& progress)
{
    if (isIn(_plan, path))
    {
        _baseline.remember(path, progress);
        _holdings.add(_handle, path);
    }
}

/// What two requests cancel out is no concern of this transaction any more.
void StagedTransaction::forgetCancelled()
{
    const auto& cancelled = _plan.cancelled();
    for (; _cancelledSeen < cancelled.size(); ++_cancelledSeen)
    {
        const std::string& path = cancelled[_cancelledSeen].path;
        if (!isIn(_plan, path))
        {
            _baseline.forget(path);
            _holdings.remove(_handle, path);
        }
    }
}

std::vector<StagedTransaction::HeldElsewhere> StagedTransaction::heldElsewhere() const
{
    std::vector<HeldElsewhere> held;
    for (const auto& path : pathsOf(_plan))
    {
        if (auto others = _holdings.others(_handle, path); !others.empty())
        {
            held.push_back({path, std::move(others)});
        }
    }
    return held;
}

StagedTransaction::Outcome StagedTransaction::commit(const Progress& progress)
{
    Outcome outcome;
    outcome.preview = preview(progress);
    const Receipt::Before before(outcome.preview);
    const auto start = std::chrono::steady_clock::now();
    try
    {
        _transaction->commit();
    }
    catch (const Refusal& refusal)
    {
        outcome.failure = refusal.what();
    }
    outcome.time = std::chrono::steady_clock::now() - start;
    _holdings.removeAll(_handle);
    outcome.receipt = receiptOf(outcome.preview, before, progress);
    return outcome;
}

} // namespace zolhost
