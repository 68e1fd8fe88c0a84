#include "filem/Arguments.h"
#include "filem/Session.h"
#include "filem/output/Quoting.h"
#include "filem/output/Sizes.h"
#include "filem/verbs/Factories.h"
#include "filem/verbs/Reading.h"

#include <ostream>

namespace zolhost::filem
{

namespace
{

class Tree : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.positiveNumber("-L,--level", _levels, "go down only so many levels");
        arguments.flag("--json", _isJson, "as JSON, one object a line, with its depth");
        arguments.optional("PLACE", _place, "a directory; where one is without it");
    }

    ExitCode run(Session& session) override
    {
        const Place place =
            _place.empty() ? session.here() : session.place(_place, PlaceFinder::Wanted::Directory);
        requireObject(session, place);
        if (_isJson)
        {
            draw(session, place, "", 1);
            return ExitCode::Done;
        }
        session.out() << session.colours().paint(Colour::Directory, shownName(place, place.value())) << '\n';
        draw(session, place, "", 1);
        session.out() << '\n'
                      << counted(_directories, "directory") << ", " << counted(_files, "file") << '\n';
        return ExitCode::Done;
    }

private:
    void draw(Session& session, const Place& place, const std::string& indent, std::size_t level)
    {
        // all of them first, as no walk stays open while another begins
        std::vector<Child> children;
        eachChildInOrder(session, place, [&](const Child& child) { children.push_back(child); });
        for (const auto& child : children)
        {
            drawChild(session, child, indent, &child == &children.back(), level);
        }
    }

    void drawChild(Session& session, const Child& child, const std::string& indent, bool isLast,
                   std::size_t level)
    {
        const bool isDirectory = child.place.isDirectory();
        ++(isDirectory ? _directories : _files);
        if (_isJson)
        {
            Json object = jsonOf(child.place, child.value);
            object["depth"] = level;
            object["isLink"] = child.isLink;
            object["isNew"] = child.isNew;
            session.out() << object.dump() << '\n';
        }
        else
        {
            const Colour colour = child.isNew    ? Colour::New
                                  : child.isLink ? Colour::Link
                                  : isDirectory  ? Colour::Directory
                                                 : Colour::None;
            session.out() << indent << (isLast ? "└── " : "├── ")
                          << session.colours().paint(colour, shownName(child.place, child.value))
                          << (child.isNew    ? "  +"
                              : child.isLink ? "  @"
                                             : "")
                          << '\n';
        }
        if ((_levels == 0 || level < _levels) && isGoneDownTo(session, child))
        {
            draw(session, child.place, indent + (isLast ? "    " : "│   "), level + 1);
        }
    }

    std::size_t _levels = 0; // 0: all
    bool _isJson = false;
    std::string _place;
    std::size_t _directories = 0;
    std::size_t _files = 0;
};

} // namespace

std::unique_ptr<Verb> makeTree()
{
    return std::make_unique<Tree>();
}

} // namespace zolhost::filem
