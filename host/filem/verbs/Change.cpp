#include "filem/verbs/Change.h"

#include "engine/Refusal.h"
#include "filem/Arguments.h"
#include "filem/Session.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Quoting.h"
#include "filem/verbs/PreviewText.h"
#include "filem/verbs/ReceiptText.h"

#include <iostream>

namespace zolhost::filem
{

void ChangeVerb::declare(Arguments& arguments)
{
    declareOwn(arguments);
    arguments.flag("--through-links", _throughLinks, "change also what symbolic links lead to");
    arguments.flag("-n,--dry-run", _isDryRun, "show what would be done, and do nothing");
    if (isDestructive())
    {
        arguments.flag("-y,--yes", _isAgreed, "don't ask before more than one object is removed");
    }
    arguments.flag("-v,--verbose", _isVerbose, "tell what became of each object");
    arguments.flag("--json", _isJson, "the same as JSON, one object a line");
    arguments.option("-m,--message", _comment, "TEXT", "comment for the audit file");
}

ExitCode ChangeVerb::run(Session& session)
{
    const bool isAlone = session.mode() == Session::Mode::Command;
    if (!isAlone && (_isDryRun || !_comment.empty()))
    {
        throw CommandFailure(ExitCode::Usage,
                             "in a session diff shows what a commit would do, and commit takes the comment");
    }
    try
    {
        session.stage(requests(session), {_throughLinks, isForced()});
    }
    catch (const Refusal& refusal)
    {
        if (_isDryRun && refusal.kind() == Refusal::Kind::Failed)
        {
            throw CommandFailure(ExitCode::Remains, "it would be refused, on " +
                                                        quotedIfNeeded(refusal.dn()) + ": " +
                                                        printable(refusal.what()));
        }
        throw;
    }
    if (!isAlone)
    {
        return ExitCode::Done;
    }
    return _isDryRun ? dryRun(session) : carryOut(session);
}

ExitCode ChangeVerb::dryRun(Session& session) const
{
    const Preview preview = session.transaction().preview(session.progress("preview").function());
    print(session, preview, _isJson);
    session.abort(true);
    return codeOf(preview);
}

void ChangeVerb::agree(Session& session) const
{
    if (!isDestructive() || _isAgreed)
    {
        return;
    }
    auto progress = session.progress("preview");
    const Preview preview = session.transaction().preview(progress.function());
    progress.clear();
    if (preview.removed.size() <= 1)
    {
        return;
    }
    const std::string what = totalsText(preview);
    if (!session.canAsk())
    {
        throw CommandFailure(ExitCode::Failed, "more than one object: " + what + "; --yes does it");
    }
    session.err() << "filem: " << what << ". Go on? [y/N] " << std::flush;
    std::string answer;
    std::getline(std::cin, answer);
    if (answer != "y" && answer != "Y" && answer != "yes")
    {
        throw CommandFailure(ExitCode::Failed, "nothing is done");
    }
}

ExitCode ChangeVerb::carryOut(Session& session) const
{
    try
    {
        agree(session);
    }
    catch (const CommandFailure&)
    {
        session.abort();
        throw;
    }
    if (!session.hasStaged())
    {
        return ExitCode::Done;
    }
    return commitAndTell(session, _comment, {_isJson, _isVerbose || _isJson});
}

} // namespace zolhost::filem
