#include "filem/Arguments.h"
#include "filem/Session.h"
#include "filem/output/Quoting.h"
#include "filem/verbs/Change.h"
#include "filem/verbs/Factories.h"
#include "staging/Protections.h"

#include <algorithm>

namespace zolhost::filem
{

namespace
{

class Mkdir : public ChangeVerb
{
protected:
    void declareOwn(Arguments& arguments) override
    {
        arguments.flag("-p,--parents", _withParents,
                       "make missing directories above too, and take one that is there as made");
        arguments.required("PLACE", _places, "directories to make");
    }

    bool isDestructive() const override { return false; }

    std::vector<Request> requests(Session& session) override
    {
        std::vector<Request> requests;
        for (const auto& text : _places)
        {
            const Place place = session.place(text, PlaceFinder::Wanted::Directory);
            if (_withParents)
            {
                addMissingAbove(session, place, requests);
            }
            if (!_withParents || isMissing(session, place, requests))
            {
                add(session, place, requests);
            }
        }
        return requests;
    }

private:
    static bool isMissing(Session& session, const Place& place, const std::vector<Request>& requests)
    {
        const bool isAsked =
            std::ranges::any_of(requests, [&](const auto& request) { return request.place == place; });
        const bool isGoing = session.plan().removedTrees().contains(place.path());
        return !isAsked &&
               (isGoing || !PlaceFinder(session.rootDirectory(), session.plan()).isDirectory(place));
    }

    static void addMissingAbove(Session& session, const Place& place, std::vector<Request>& requests)
    {
        const Place above = place.parent();
        if (!above.isRoot())
        {
            addMissingAbove(session, above, requests);
            if (isMissing(session, above, requests))
            {
                add(session, above, requests);
            }
        }
    }

    static void add(const Session& session, const Place& place, std::vector<Request>& requests)
    {
        if (!place.isReachable() && !place.isRoot())
        {
            session.warn(shellQuoted(place.name()) +
                         " has a comma, which ends a value in a DN: no DN will reach what is in it");
        }
        if (isMarkerName(place.name()))
        {
            session.warn(shellQuoted(place.shortPath()) +
                         " will count as a marker of the directory that it is in");
        }
        requests.push_back({Request::Kind::MakeDirectory, place});
    }

    bool _withParents = false;
    Words _places;
};

} // namespace

std::unique_ptr<Verb> makeMkdir()
{
    return std::make_unique<Mkdir>();
}

} // namespace zolhost::filem
