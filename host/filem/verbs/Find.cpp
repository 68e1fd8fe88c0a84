#include "filem/Arguments.h"
#include "filem/Session.h"
#include "filem/output/Quoting.h"
#include "filem/verbs/Factories.h"
#include "filem/verbs/Reading.h"
#include "staging/Expression.h"

#include <fnmatch.h>
#include <ostream>
#include <zol/common/RegularExpression.h>

namespace zolhost::filem
{

namespace
{

class Find : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.option("--name", _glob, "PATTERN", "names that this pattern of a shell matches");
        arguments.option("-e,--matching", _expression, "REGEX",
                         "names that this extended regular expression matches as a whole");
        arguments.choice("--type", _type, {"d", "f"}, "TYPE", "d for directories, f for files");
        arguments.size("--larger", _larger, "files of more bytes than this; K, M and G are understood");
        arguments.flag("-0,--null", _endsInNull, "names as they are, each ended by a zero byte");
        arguments.flag("--json", _isJson, "as JSON, one object a line");
        arguments.optional("PLACE", _places, "directories; where one is without it");
    }

    ExitCode run(Session& session) override
    {
        _pattern = std::make_unique<Zol::RegularExpression>(anchored(_expression), REG_EXTENDED | REG_NOSUB);
        if (const std::string why = whyNotForWholeName(_expression); !why.empty())
        {
            throw CommandFailure(ExitCode::Usage, "find: " + why);
        }
        if (!_pattern->isExpressionValid())
        {
            throw CommandFailure(ExitCode::Usage, "find: the regular expression is not valid");
        }
        std::vector<Place> places;
        for (const auto& text : _places)
        {
            places.push_back(session.place(text, PlaceFinder::Wanted::Directory));
            requireObject(session, places.back());
        }
        if (places.empty())
        {
            places.push_back(session.here());
        }
        auto progress = session.progress("find");
        for (const auto& place : places)
        {
            walk(session, place, progress);
        }
        return ExitCode::Done;
    }

private:
    void walk(Session& session, const Place& place, ProgressLine& progress)
    {
        std::vector<Place> below;
        eachChildInOrder(session, place, [&](const Child& child) {
            progress.at(++_seen);
            if (isWanted(child))
            {
                progress.clear();
                print(session, child);
            }
            if (isGoneDownTo(session, child))
            {
                below.push_back(child.place);
            }
        });
        for (const auto& directory : below)
        {
            walk(session, directory, progress);
        }
    }

    bool isWanted(const Child& child) const
    {
        const std::string name = child.place.name();
        const bool hasType = _type.empty() || (_type == "d") == child.place.isDirectory();
        const bool hasName = _glob.empty() || fnmatch(_glob.c_str(), name.c_str(), 0) == 0;
        return hasType && hasName && (_expression.empty() || _pattern->match(name, 0)) && isLarge(child);
    }

    bool isLarge(const Child& child) const
    {
        return !_larger || sizeOnDisk(child.place.path()).value_or(0) > *_larger;
    }

    void print(const Session& session, const Child& child) const
    {
        if (_isJson)
        {
            session.out() << jsonOf(child.place, child.value).dump() << '\n';
            return;
        }
        const std::string path = child.place.shortPath() + (child.place.isDirectory() ? "/" : "");
        if (_endsInNull)
        {
            session.out() << path << '\0';
        }
        else
        {
            session.out() << shellQuoted(path) << '\n';
        }
    }

    std::string _glob;
    std::string _expression;
    std::string _type;
    std::optional<std::uint64_t> _larger;
    bool _endsInNull = false;
    bool _isJson = false;
    Words _places;
    std::unique_ptr<Zol::RegularExpression> _pattern;
    std::size_t _seen = 0;
};

} // namespace

std::unique_ptr<Verb> makeFind()
{
    return std::make_unique<Find>();
}

} // namespace zolhost::filem
