#include "engine/Refusal.h"
#include "filem/Session.h"
#include "filem/verbs/Change.h"
#include "filem/verbs/Factories.h"

#include <CLI/CLI.hpp>
#include <optional>

namespace zolhost::filem
{

namespace
{

using Kind = Request::Kind;
using Wanted = PlaceFinder::Wanted;

void declarePlaces(CLI::App& parser, Words& places, const std::string& help)
{
    parser.add_option("PLACE", places, help)->required()->type_name("PLACE");
}

/// The same request for each place.
std::vector<Request> requestsFor(Session& session, const Words& places, Wanted wanted, Kind kind)
{
    std::vector<Request> requests;
    for (const auto& text : places)
    {
        requests.push_back({kind, session.place(text, wanted)});
    }
    return requests;
}

class Rmdir : public ChangeVerb
{
protected:
    void declareOwn(CLI::App& parser) override
    {
        declarePlaces(parser, _places, "directories with no files in them or below");
    }
    std::vector<Request> requests(Session& session) override
    {
        return requestsFor(session, _places, Wanted::Directory, Kind::RemoveDirectory);
    }

private:
    Words _places;
};

class Rm : public ChangeVerb
{
protected:
    void declareOwn(CLI::App& parser) override
    {
        parser
            .add_option(
                "-e,--matching", _expression,
                "remove the files of the directories whose whole name this extended regular expression "
                "matches")
            ->type_name("REGEX");
        declarePlaces(parser, _places, "files; with --matching, directories");
    }

    std::vector<Request> requests(Session& session) override
    {
        if (!_expression)
        {
            auto requests = requestsFor(session, _places, Wanted::File, Kind::RemoveFile);
            for (const auto& request : requests)
            {
                requireFile(request.place);
            }
            return requests;
        }
        auto requests = requestsFor(session, _places, Wanted::Directory, Kind::RemoveMatching);
        for (auto& request : requests)
        {
            request.expression = *_expression;
        }
        return requests;
    }

private:
    static void requireFile(const Place& place)
    {
        if (place.isDirectory())
        {
            throw Refusal(Refusal::Kind::Failed, place.dn(),
                          "it is a directory; rmdir and rmtree remove those");
        }
    }

    std::optional<std::string> _expression;
    Words _places;
};

class Rmtree : public ChangeVerb
{
protected:
    void declareOwn(CLI::App& parser) override
    {
        parser.add_flag("--force-root", _isForced, "remove even the root with the whole tree");
        declarePlaces(parser, _places, "directories, removed with all that is in them");
    }
    std::vector<Request> requests(Session& session) override
    {
        return requestsFor(session, _places, Wanted::Directory, Kind::RemoveTree);
    }
    bool isForced() const override { return _isForced; }

private:
    bool _isForced = false;
    Words _places;
};

Request deletionOf(const Place& place)
{
    return {place.isFile() ? Kind::RemoveFile : Kind::RemoveDirectory, place};
}

class Delete : public ChangeVerb
{
protected:
    void declareOwn(CLI::App& parser) override
    {
        declarePlaces(parser, _places, "files, or directories with no files in them or below");
    }
    std::vector<Request> requests(Session& session) override
    {
        std::vector<Request> requests;
        for (const auto& text : _places)
        {
            requests.push_back(deletionOf(session.place(text)));
        }
        return requests;
    }

private:
    Words _places;
};

/// The actions that the model knows, each as the verb of its own does it.
class Action : public ChangeVerb
{
protected:
    void declareOwn(CLI::App& parser) override
    {
        parser.add_flag("--force-root", _isForced, "remove even the root with the whole tree");
        parser.add_option("PLACE", _place, "the object")->required()->type_name("PLACE");
        parser.add_option("ACTION", _name, "remove or removeFile")->required()->type_name("ACTION");
        parser.add_option("ARGUMENT", _arguments, "of removeFile: the extended regular expression");
    }

    std::vector<Request> requests(Session& session) override
    {
        const Place place = session.place(_place);
        const bool takesExpression = _name == "removeFile";
        if (!takesExpression && _name != "remove")
        {
            throw Refusal(Refusal::Kind::BadName, place.dn(),
                          "a " + std::string(place.moClass().name) + " has no action " + _name);
        }
        if (_arguments.size() != (takesExpression ? 1U : 0U))
        {
            throw CommandFailure(ExitCode::Usage,
                                 "the action " + _name + " takes " +
                                     (takesExpression ? "one argument, an expression" : "no argument"));
        }
        if (takesExpression)
        {
            return {{Kind::RemoveMatching, place, _arguments.front()}};
        }
        // for a file, the component does the same as for its deletion
        return {{place.isFile() ? Kind::RemoveFile : Kind::RemoveTree, place}};
    }

    bool isForced() const override { return _isForced; }

private:
    bool _isForced = false;
    std::string _place;
    std::string _name;
    Words _arguments;
};

} // namespace

std::unique_ptr<Verb> makeRmdir()
{
    return std::make_unique<Rmdir>();
}

std::unique_ptr<Verb> makeRm()
{
    return std::make_unique<Rm>();
}

std::unique_ptr<Verb> makeRmtree()
{
    return std::make_unique<Rmtree>();
}

std::unique_ptr<Verb> makeDelete()
{
    return std::make_unique<Delete>();
}

std::unique_ptr<Verb> makeAction()
{
    return std::make_unique<Action>();
}

} // namespace zolhost::filem
