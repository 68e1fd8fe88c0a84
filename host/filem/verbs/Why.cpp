#include "engine/Refusal.h"
#include "filem/Arguments.h"
#include "filem/Session.h"
#include "filem/output/Json.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Quoting.h"
#include "filem/output/Sizes.h"
#include "filem/output/ValueText.h"
#include "filem/verbs/Factories.h"
#include "staging/Preview.h"
#include "staging/Protections.h"

#include <ostream>

namespace zolhost::filem
{

namespace
{

using Kind = Request::Kind;

Kind kindOf(const std::string& verb, const Place& place)
{
    const VerbDescription* const found = findVerb(verb);
    const std::string_view name = found == nullptr ? std::string_view() : found->name;
    if (name == "mkdir")
    {
        return Kind::MakeDirectory;
    }
    if (name == "rmdir")
    {
        return Kind::RemoveDirectory;
    }
    if (name == "rm")
    {
        return Kind::RemoveFile;
    }
    if (name == "rmtree")
    {
        return Kind::RemoveTree;
    }
    if (name == "delete")
    {
        return place.isFile() ? Kind::RemoveFile : Kind::RemoveDirectory;
    }
    throw CommandFailure(ExitCode::Usage,
                         "why takes mkdir, rmdir, rm, rmtree or delete, not " + printable(verb));
}

class Why : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.flag("--json", _isJson, "as JSON");
        arguments.required("VERB", _verb, "mkdir, rmdir, rm, rmtree or delete");
        arguments.required("PLACE", _place, "what it would be asked of");
    }

    ExitCode run(Session& session) override
    {
        const bool isOfFiles = _verb == "rm" || _verb == "delete";
        const Place place =
            session.place(_place, isOfFiles ? PlaceFinder::Wanted::Anything : PlaceFinder::Wanted::Directory);
        const Request request = {kindOf(_verb, place), place};
        const auto [reason, code] = reasonFor(session, request);
        const Protections found =
            protectionsOf(place.path(), session.plan(), session.progress("looking").function());
        const auto policies = policiesOf(session, place);
        if (_isJson)
        {
            printJson(session, place, reason, found, policies);
        }
        else
        {
            print(session, place, reason, found, policies);
        }
        return code;
    }

private:
    struct Reason
    {
        std::string why; ///< empty if nothing speaks against it
        ExitCode code = ExitCode::Done;
    };

    static Reason reasonFor(Session& session, const Request& request)
    {
        try
        {
            vet(request, session.plan(), {});
        }
        catch (const Refusal& refusal)
        {
            const bool isMissing = refusal.kind() == Refusal::Kind::NoSuchObject;
            return {refusal.what(), isMissing ? ExitCode::NoSuchObject : ExitCode::Failed};
        }
        if (const std::string why = reasonAgainst(request, session.plan()); !why.empty())
        {
            return {why, ExitCode::Failed};
        }
        // the component would take it, but the system may not
        Plan plan;
        const std::string path = request.place.path();
        switch (request.kind)
        {
        case Kind::MakeDirectory:
            plan.makeDirectory(path);
            break;
        case Kind::RemoveFile:
            plan.removeFile(path);
            break;
        default:
            plan.removeTree(path);
            break;
        }
        const Preview preview = previewOf(plan, session.progress("looking").function());
        for (const auto& item : preview.items)
        {
            if (item.outlook == Preview::Item::Outlook::Fails)
            {
                return {"it would remain: " + item.why, ExitCode::Failed};
            }
        }
        return {};
    }

    static AttributeValue policiesOf(Session& session, const Place& place)
    {
        if (!place.isDirectory() || place.isRoot() || !place.isReachable())
        {
            return {};
        }
        return session.objects().attribute(place.dn(), "reservedByPolicy");
    }

    static std::string shown(const Place& place, const std::string& path)
    {
        return shownPath(path, place.rootDirectory());
    }

    void print(Session& session, const Place& place, const std::string& reason, const Protections& found,
               const AttributeValue& policies) const
    {
        auto& out = session.out();
        out << _verb << ' ' << shellQuoted(place.shortPath()) << ": "
            << (reason.empty() ? "nothing speaks against it" : "refused: " + printable(reason)) << '\n';
        if (found.isLink)
        {
            out << "link: to " << shellQuoted(found.linkTarget) << '\n';
        }
        for (const auto& marker : found.markers)
        {
            out << "marker: " << marker << " is in it\n";
        }
        for (const auto& marker : found.parentMarkers)
        {
            out << "marker above: " << marker << '\n';
        }
        for (const auto& marker : found.markersBelow)
        {
            out << "marker below: " << shown(place, marker) << ", would go along with rmtree\n";
        }
        if (found.filesBelow != 0)
        {
            out << "files: " << counted(found.filesBelow, "file") << " in it or below, "
                << shown(place, found.aFileBelow) << (found.filesBelow == 1 ? "" : " first") << '\n';
        }
        for (const auto& policy : policies.values)
        {
            out << "policy: " << valueText(policy) << " reserves it\n";
        }
    }

    void printJson(Session& session, const Place& place, const std::string& reason, const Protections& found,
                   const AttributeValue& policies) const
    {
        Json object;
        object["verb"] = _verb;
        setText(object, "dn", place.dn());
        setText(object, "path", place.path());
        object["isRefused"] = !reason.empty();
        setText(object, "why", reason);
        object["isThere"] = found.isThere;
        object["isLink"] = found.isLink;
        setText(object, "linkTarget", found.linkTarget);
        object["markers"] = found.markers;
        object["markersAbove"] = found.parentMarkers;
        object["markersBelow"] = Json::array();
        for (const auto& marker : found.markersBelow)
        {
            object["markersBelow"].push_back(jsonOf(marker));
        }
        object["filesBelow"] = found.filesBelow;
        setText(object, "aFileBelow", found.aFileBelow);
        object["policies"] = jsonOf(policies, true);
        session.out() << object.dump() << '\n';
    }

    bool _isJson = false;
    std::string _verb;
    std::string _place;
};

} // namespace

std::unique_ptr<Verb> makeWhy()
{
    return std::make_unique<Why>();
}

} // namespace zolhost::filem
