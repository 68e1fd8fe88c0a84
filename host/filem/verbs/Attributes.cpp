#include "engine/Refusal.h"
#include "engine/Vetting.h"
#include "filem/Arguments.h"
#include "filem/Session.h"
#include "filem/output/Quoting.h"
#include "filem/output/Sizes.h"
#include "filem/output/ValueText.h"
#include "filem/verbs/Factories.h"
#include "filem/verbs/Reading.h"

#include <exception>
#include <ostream>
#include <sys/stat.h>

namespace zolhost::filem
{

namespace
{

AttributeValue readAttribute(Session& session, const Place& place, const MoAttribute& attribute)
{
    const bool isKey = attribute.name == place.moClass().keyAttribute;
    return session.objects().attribute(isKey ? place.shownDn() : place.dn(), std::string(attribute.name));
}

void printAttribute(std::ostream& out, const MoAttribute& attribute, const AttributeValue& value)
{
    if (value.values.empty())
    {
        out << attribute.name << ":\n";
    }
    for (const auto& single : value.values)
    {
        const std::string text = valueText(single);
        out << attribute.name << ':' << (text.empty() ? "" : " ") << text << '\n';
    }
}

/// Its attributes can be read, and are its own.
void requireReadable(Session& session, const Place& place)
{
    requireObject(session, place);
    vetting::requireReachable(place);
}

/// Reads the attributes one after the other; one that can't be read is no reason to hold back the others. The
/// first refusal is thrown at the end.
class Reader
{
public:
    template<class Show>
    void read(Session& session, const Place& place, const MoAttribute& attribute, const Show& show)
    {
        try
        {
            show(readAttribute(session, place, attribute));
        }
        catch (const Refusal& refusal)
        {
            if (_first == nullptr)
            {
                _first = std::make_exception_ptr(
                    Refusal(refusal.kind(), place.dn(), std::string(attribute.name) + ": " + refusal.what()));
            }
        }
    }

    void end() const
    {
        if (_first != nullptr)
        {
            std::rethrow_exception(_first);
        }
    }

private:
    std::exception_ptr _first;
};

class Stat : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.flag("--json", _isJson, "as JSON, one object a line");
        arguments.required("PLACE", _places, "objects");
    }

    ExitCode run(Session& session) override
    {
        std::vector<Place> places;
        for (const auto& text : _places)
        {
            places.push_back(session.place(text));
            requireReadable(session, places.back());
        }
        Reader reader;
        for (const auto& place : places)
        {
            if (_isJson)
            {
                printJson(session, place, reader);
            }
            else
            {
                session.out() << (&place == &places.front() ? "" : "\n");
                print(session, place, reader);
            }
        }
        reader.end();
        return ExitCode::Done;
    }

private:
    static void print(Session& session, const Place& place, Reader& reader)
    {
        auto& out = session.out();
        out << "dn: " << quotedIfNeeded(place.dn()) << '\n';
        if (!place.names().empty())
        {
            out << "name: " << shownInAllForms(place, place.value()) << '\n';
            struct stat status = {};
            if (stat(place.path().c_str(), &status) == 0)
            {
                const std::string mode = modeText(status.st_mode);
                out << "mode: " << (place.isDirectory() ? mode : "-" + mode.substr(1)) << '\n';
            }
            if (const std::string link = linkOnTheWay(place); !link.empty())
            {
                out << "link: " << shellQuoted(link.substr(place.rootDirectory().size() + 1))
                    << (isOutsideRoot(place) ? " leads out of the tree" : " leads here") << '\n';
            }
        }
        for (const auto& attribute : place.moClass().attributes)
        {
            reader.read(session, place, attribute,
                        [&](const AttributeValue& value) { printAttribute(out, attribute, value); });
        }
    }

    static void printJson(Session& session, const Place& place, Reader& reader)
    {
        Json object = jsonOf(place, place.value());
        setText(object, "link", linkOnTheWay(place));
        object["attributes"] = Json::object();
        for (const auto& attribute : place.moClass().attributes)
        {
            const std::string name(attribute.name);
            reader.read(session, place, attribute, [&](const AttributeValue& value) {
                object["attributes"][name] = jsonOf(value, attribute.isList);
            });
        }
        session.out() << object.dump() << '\n';
    }

    bool _isJson = false;
    Words _places;
};

class Get : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.flag("--json", _isJson, "as JSON");
        arguments.required("PLACE", _place, "the object");
        arguments.required("ATTRIBUTE", _names, "its attributes");
    }

    ExitCode run(Session& session) override
    {
        const Place place = session.place(_place);
        for (const auto& name : _names)
        {
            vetting::requireAttribute(place, name);
        }
        requireReadable(session, place);
        Json object = Json::object();
        for (const auto& name : _names)
        {
            const MoAttribute& attribute = *place.moClass().attribute(name);
            const AttributeValue value = readAttribute(session, place, attribute);
            if (_isJson)
            {
                object[name] = jsonOf(value, attribute.isList);
            }
            else
            {
                printAttribute(session.out(), attribute, value);
            }
        }
        if (_isJson)
        {
            session.out() << object.dump() << '\n';
        }
        return ExitCode::Done;
    }

private:
    bool _isJson = false;
    std::string _place;
    Words _names;
};

class Exists : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.flag("--json", _isJson, "as JSON");
        arguments.required("PLACE", _place, "the object");
    }

    ExitCode run(Session& session) override
    {
        const Place place = session.place(_place);
        const bool exists = place.names().empty() || session.objects().exists(place.dn());
        if (_isJson)
        {
            session.out() << Json({{"exists", exists}}).dump() << '\n';
        }
        else
        {
            session.out() << (exists ? "true" : "false") << '\n';
        }
        return exists ? ExitCode::Done : ExitCode::NoSuchObject;
    }

private:
    bool _isJson = false;
    std::string _place;
};

class Count : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.flag("--json", _isJson, "as JSON");
        arguments.optional("PLACE", _place, "the object; where one is without it");
        arguments.optional("CLASS", _class, "FileGroup or FileInformation; both without it");
    }

    ExitCode run(Session& session) override
    {
        const Place place =
            _place.empty() ? session.here() : session.place(_place, PlaceFinder::Wanted::Directory);
        requireReadable(session, place);
        Json object = Json::object();
        if (!_class.empty())
        {
            vetting::requireChildClass(place, _class);
        }
        for (const std::string_view className : {"FileGroup", "FileInformation"})
        {
            if (!place.moClass().canHold(className) || (!_class.empty() && className != _class))
            {
                continue;
            }
            const auto count = session.objects().countChildren(place.dn(), std::string(className));
            object[std::string(className)] = count;
            if (!_isJson)
            {
                session.out() << (_class.empty() ? std::string(className) + ": " : "") << count << '\n';
            }
        }
        if (_isJson)
        {
            session.out() << object.dump() << '\n';
        }
        return ExitCode::Done;
    }

private:
    bool _isJson = false;
    std::string _place;
    std::string _class;
};

} // namespace

std::unique_ptr<Verb> makeStat()
{
    return std::make_unique<Stat>();
}

std::unique_ptr<Verb> makeGet()
{
    return std::make_unique<Get>();
}

std::unique_ptr<Verb> makeExists()
{
    return std::make_unique<Exists>();
}

std::unique_ptr<Verb> makeCount()
{
    return std::make_unique<Count>();
}

} // namespace zolhost::filem
