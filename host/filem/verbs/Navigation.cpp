#include "engine/Refusal.h"
#include "filem/Arguments.h"
#include "filem/Session.h"
#include "filem/output/Quoting.h"
#include "filem/verbs/Factories.h"

#include <ostream>

namespace zolhost::filem
{

namespace
{

class Cd : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.optional("PLACE", _place, "a directory; the root without it");
    }
    ExitCode run(Session& session) override
    {
        const Place place = _place.empty() ? Place(session.rootDirectory())
                                           : session.place(_place, PlaceFinder::Wanted::Directory);
        if (!PlaceFinder(session.rootDirectory(), session.plan()).isDirectory(place))
        {
            throw Refusal(Refusal::Kind::NoSuchObject, place.dn(), "there is no such directory");
        }
        session.go(place);
        return ExitCode::Done;
    }

private:
    std::string _place;
};

class Up : public Verb
{
public:
    void declare(Arguments& /*arguments*/) override {}
    ExitCode run(Session& session) override
    {
        session.go(session.here().parent());
        return ExitCode::Done;
    }
};

class Top : public Verb
{
public:
    void declare(Arguments& /*arguments*/) override {}
    ExitCode run(Session& session) override
    {
        session.go(Place(session.rootDirectory()));
        return ExitCode::Done;
    }
};

class Pwd : public Verb
{
public:
    void declare(Arguments& /*arguments*/) override {}
    ExitCode run(Session& session) override
    {
        session.out() << quotedIfNeeded(session.here().dn()) << '\n';
        return ExitCode::Done;
    }
};

class Quit : public Verb
{
public:
    void declare(Arguments& /*arguments*/) override {}
    ExitCode run(Session& session) override
    {
        session.quit();
        return ExitCode::Done;
    }
};

} // namespace

std::unique_ptr<Verb> makeCd()
{
    return std::make_unique<Cd>();
}

std::unique_ptr<Verb> makeUp()
{
    return std::make_unique<Up>();
}

std::unique_ptr<Verb> makeTop()
{
    return std::make_unique<Top>();
}

std::unique_ptr<Verb> makePwd()
{
    return std::make_unique<Pwd>();
}

std::unique_ptr<Verb> makeQuit()
{
    return std::make_unique<Quit>();
}

} // namespace zolhost::filem
