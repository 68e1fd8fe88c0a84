#include "filem/Session.h"

#include "engine/Refusal.h"
#include "engine/ThreadContext.h"
#include "filem/PrintableText.h"

#include <ostream>
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

CommandFailure failureOf(const Command& command, const Refusal& refusal)
{
    const std::string where = refusal.dn().empty() ? "" : ", on " + printable(refusal.dn());
    return {exitCodeOf(refusal.kind()),
            "can't " + std::string(command.name) + where + ": " + printable(refusal.what())};
}

} // namespace

Session::Session(Host& host, std::ostream& out, std::ostream& err)
    : _host(host)
    , _out(out)
    , _err(err)
{}

ExitCode Session::run(const Words& words)
{
    const Command& command = commandOf(words);
    try
    {
        const ExitCode code = command.run(*this, {words.begin() + 1, words.end()});
        showMessages();
        _hasChanges = _hasChanges || command.changesTree;
        return code;
    }
    catch (const Refusal& refusal)
    {
        throw failureOf(command, refusal);
    }
}

ManagedObjects Session::objects()
{
    if (_transaction == nullptr)
    {
        _transaction = _host.begin();
    }
    return _host.objects(*_transaction);
}

void Session::commit()
{
    _hasChanges = false;
    if (const auto transaction = std::exchange(_transaction, nullptr))
    {
        transaction->commit();
    }
}

void Session::abort()
{
    _hasChanges = false;
    _transaction.reset();
}

/// What the component had to say although it did what was asked.
void Session::showMessages()
{
    for (const auto& message : ThreadContext::take())
    {
        _err << "filem: " << printable(message) << '\n';
    }
}

} // namespace zolhost::filem
