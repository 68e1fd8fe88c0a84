#include "filem/Arguments.h"
#include "filem/Session.h"
#include "filem/output/Json.h"
#include "filem/output/Quoting.h"
#include "filem/output/RequestText.h"
#include "filem/output/Sizes.h"
#include "filem/verbs/Factories.h"
#include "filem/verbs/PreviewText.h"
#include "filem/verbs/ReceiptText.h"

#include <algorithm>
#include <ostream>

namespace zolhost::filem
{

namespace
{

using Drift = Baseline::Drift;

std::string whatText(Drift::What what)
{
    switch (what)
    {
    case Drift::What::Appeared:
        return "appeared";
    case Drift::What::Vanished:
        return "vanished";
    case Drift::What::Changed:
        return "changed";
    case Drift::What::Replaced:
        break;
    }
    return "was replaced";
}

/// Not something in it or above it.
bool isItself(const Drift& drift)
{
    return drift.path == drift.staged || drift.path + '/' == drift.staged;
}

std::string shown(const Session& session, const std::string& path)
{
    return shownPath(path, session.rootDirectory());
}

/// "appeared since logs/ was staged".
std::string driftText(const Session& session, const Drift& drift)
{
    const std::string since = isItself(drift) ? "it" : shown(session, drift.staged);
    return whatText(drift.what) + " since " + since + " was staged";
}

void warnOfDrift(Session& session)
{
    if (!session.hasStaged())
    {
        return;
    }
    const auto drift = session.transaction().drift(session.progress("drift").function());
    for (const auto& change : drift)
    {
        session.warn(shown(session, change.path) + " " + driftText(session, change));
    }
    for (const auto& held : session.transaction().heldElsewhere())
    {
        session.warn(shown(session, held.path) + " is staged in another open transaction too");
    }
}

class Diff : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.flag("--json", _isJson, "as JSON, one object a line");
    }
    ExitCode run(Session& session) override
    {
        auto progress = session.progress("preview");
        const Preview preview = session.transaction().preview(progress.function());
        progress.clear();
        print(session, preview, _isJson);
        return codeOf(preview);
    }

private:
    bool _isJson = false;
};

class Status : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.flag("--json", _isJson, "as JSON, one object a line");
    }

    ExitCode run(Session& session) override
    {
        const auto& transaction = session.transaction();
        const auto drift = transaction.drift(session.progress("drift").function());
        if (_isJson)
        {
            printJson(session, drift);
            return ExitCode::Done;
        }
        if (transaction.requests().empty())
        {
            session.out() << "nothing is staged\n";
        }
        for (const auto& request : transaction.requests())
        {
            session.out() << textOf(request) << '\n';
        }
        for (const auto& change : drift)
        {
            session.out() << session.colours().paint(Colour::Warning, "! " + shown(session, change.path))
                          << "  " << driftText(session, change) << '\n';
        }
        for (const auto& held : transaction.heldElsewhere())
        {
            session.out() << session.colours().paint(Colour::Warning, "! " + shown(session, held.path))
                          << "  is staged in " << counted(held.txHandles.size(), "other open transaction")
                          << " too\n";
        }
        return ExitCode::Done;
    }

private:
    static void printJson(Session& session, const std::vector<Drift>& drift)
    {
        for (const auto& request : session.transaction().requests())
        {
            Json object;
            object["kind"] = "staged";
            object.update(jsonOf(request));
            session.out() << object.dump() << '\n';
        }
        for (const auto& change : drift)
        {
            Json object;
            object["kind"] = "drift";
            setText(object, "staged", change.staged);
            setText(object, "path", change.path);
            object["what"] = whatText(change.what);
            session.out() << object.dump() << '\n';
        }
        for (const auto& held : session.transaction().heldElsewhere())
        {
            Json object;
            object["kind"] = "held elsewhere";
            setText(object, "path", held.path);
            object["transactions"] = held.txHandles;
            session.out() << object.dump() << '\n';
        }
    }

    bool _isJson = false;
};

class Commit : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.option("-m,--message", _comment, "TEXT", "comment for the audit file");
        arguments.flag("--json", _isJson, "the receipt as JSON, one object a line");
    }
    ExitCode run(Session& session) override
    {
        if (!session.hasStaged())
        {
            session.warn("nothing is staged");
            return ExitCode::Done;
        }
        warnOfDrift(session);
        return commitAndTell(session, _comment, {_isJson, true});
    }

private:
    std::string _comment;
    bool _isJson = false;
};

class Abort : public Verb
{
public:
    void declare(Arguments& /*arguments*/) override {}
    ExitCode run(Session& session) override
    {
        session.abort();
        return ExitCode::Done;
    }
};

class Restage : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.flag("--through-links", _throughLinks, "also what symbolic links lead to");
        arguments.flag("--force-root", _isForced, "also the removal of the root");
    }
    ExitCode run(Session& session) override
    {
        if (session.dropped().empty())
        {
            throw CommandFailure(ExitCode::Failed, "nothing was dropped that could be staged again");
        }
        const auto requests = session.dropped();
        session.stage(requests, {_throughLinks, _isForced});
        for (const auto& request : requests)
        {
            session.out() << textOf(request) << '\n';
        }
        return ExitCode::Done;
    }

private:
    bool _throughLinks = false;
    bool _isForced = false;
};

} // namespace

std::unique_ptr<Verb> makeDiff()
{
    return std::make_unique<Diff>();
}

std::unique_ptr<Verb> makeStatus()
{
    return std::make_unique<Status>();
}

std::unique_ptr<Verb> makeCommit()
{
    return std::make_unique<Commit>();
}

std::unique_ptr<Verb> makeAbort()
{
    return std::make_unique<Abort>();
}

std::unique_ptr<Verb> makeRestage()
{
    return std::make_unique<Restage>();
}

} // namespace zolhost::filem
