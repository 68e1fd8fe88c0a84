#include "engine/Refusal.h"
#include "filem/Arguments.h"
#include "filem/Session.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Quoting.h"
#include "filem/output/Sizes.h"
#include "filem/output/Table.h"
#include "filem/verbs/Factories.h"
#include "filem/verbs/Reading.h"

#include <filesystem>
#include <map>
#include <ostream>
#include <sys/stat.h>

namespace zolhost::filem
{

namespace
{

struct FileFacts
{
    std::uint64_t size = 0;
    std::string time;
};

/// Sizes and times of the files of a directory: from the attribute `files`, or one by one if the component
/// refuses that, as it does for one link that leads nowhere.
class FactsOfFiles
{
    /// With more entries, the attribute would be all in memory before the first line is shown.
    static constexpr std::size_t MANY = 20'000;

public:
    FactsOfFiles(Session& session, const Place& directory)
        : _session(session)
    {
        if (directory.isRoot() || !directory.isReachable() || hasMoreEntriesThan(MANY, directory.path()))
        {
            return;
        }
        try
        {
            const auto files = session.objects().attribute(directory.dn(), "files");
            for (const auto& file : files.values)
            {
                add(std::get<StructValue>(file));
            }
        }
        catch (const Refusal& refusal)
        {
            const std::string culprit = danglingLinkIn(directory);
            session.warn("the component refuses the attribute files of " + quotedIfNeeded(directory.dn()) +
                         ": " +
                         (culprit.empty() ? printable(refusal.what())
                                          : shellQuoted(culprit) + " is a link that leads nowhere") +
                         "; sizes and times are read one by one");
        }
    }

    FileFacts of(const Place& file) const
    {
        const auto found = _facts.find(file.name());
        return found != _facts.end() ? found->second : single(file);
    }

private:
    void add(const StructValue& file)
    {
        std::string name;
        FileFacts facts;
        for (const auto& [member, value] : file)
        {
            const SingleValue& single = value.values.at(0);
            if (member == "fileName")
            {
                name = std::get<std::string>(single);
            }
            else if (member == "size")
            {
                facts.size = std::get<std::uint64_t>(single);
            }
            else if (member == "modificationTime")
            {
                facts.time = std::get<std::string>(single);
            }
        }
        _facts.emplace(std::move(name), std::move(facts));
    }

    FileFacts single(const Place& file) const
    {
        if (!file.isReachable())
        {
            return {sizeOnDisk(file.path()).value_or(0), changeTimeOf(file.path())};
        }
        const auto objects = _session.objects();
        const auto size = objects.attribute(file.dn(), "size");
        const auto time = objects.attribute(file.dn(), "modificationTime");
        return {static_cast<std::uint64_t>(std::get<std::int64_t>(size.values.at(0))),
                std::get<std::string>(time.values.at(0))};
    }

    std::string danglingLinkIn(const Place& directory) const
    {
        for (const auto& entry : unlistedIn(_session, directory))
        {
            struct stat status = {};
            const std::string path = directory.path() + entry.name;
            if (lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode) &&
                stat(path.c_str(), &status) != 0)
            {
                return entry.name;
            }
        }
        return {};
    }

    Session& _session;
    std::map<std::string, FileFacts> _facts;
};

class Ls : public Verb
{
public:
    void declare(Arguments& arguments) override
    {
        arguments.flag("-l,--long", _isLong, "with kind, size, time of the last change and marks");
        arguments.flag("-R,--recursive", _isRecursive, "list what is below directories too");
        arguments.flag(
            "-a,--all", _showsAll,
            "also what is in the directory on disk and no object, and what is staged to be removed");
        arguments.flag("-0,--null", _endsInNull, "names as they are, each ended by a zero byte");
        arguments.flag("--json", _isJson, "as JSON, one object a line");
        arguments.optional("PLACE", _places, "directories or files; where one is without it");
    }

    ExitCode run(Session& session) override
    {
        if (_endsInNull && (_isLong || _isJson))
        {
            throw CommandFailure(ExitCode::Usage, "ls: -0 goes with neither -l nor --json");
        }
        std::vector<Place> places;
        for (const auto& text : _places)
        {
            places.push_back(session.place(text));
            requireObject(session, places.back());
        }
        if (places.empty())
        {
            places.push_back(session.here());
            requireObject(session, places.back());
        }
        _hasHeads = places.size() > 1 || _isRecursive;
        for (const auto& place : places)
        {
            list(session, place);
        }
        return ExitCode::Done;
    }

private:
    void list(Session& session, const Place& place)
    {
        if (!place.isDirectory())
        {
            listOne(session, place);
            return;
        }
        printHead(session, place);
        if (_isLong && !_isJson)
        {
            listLong(session, place);
        }
        else
        {
            listShort(session, place);
        }
        if (_showsAll)
        {
            listUnlisted(session, place);
        }
        if (_isRecursive)
        {
            for (const auto& directory : directoriesIn(session, place))
            {
                list(session, directory);
            }
        }
    }

    void printHead(const Session& session, const Place& place)
    {
        if (_hasHeads && !_isJson && !_endsInNull)
        {
            session.out() << (_isFirst ? "" : "\n") << shellQuoted(place.shortPath()) << ":\n";
            _isFirst = false;
        }
    }

    void listOne(Session& session, const Place& place)
    {
        const Child child{place, place.value()};
        if (_isJson)
        {
            printJson(session, child, FactsOfFiles(session, place.parent()));
        }
        else if (_isLong)
        {
            Table table = longTable();
            table.add(longRow(session, child, FactsOfFiles(session, place.parent())));
            table.print(session.out());
        }
        else
        {
            printName(session, child);
        }
    }

    void listShort(Session& session, const Place& place)
    {
        std::optional<FactsOfFiles> facts;
        if (_isJson && _isLong)
        {
            facts.emplace(session, place);
        }
        if (place.isRoot() && !_endsInNull)
        {
            printAny(session, {place.configuration(), "1"}, facts);
        }
        eachChildInOrder(session, place, [&](const Child& child) { printAny(session, child, facts); });
    }

    void listLong(Session& session, const Place& place)
    {
        const FactsOfFiles facts(session, place);
        std::optional<Table> table = longTable();
        std::size_t rows = 0;
        if (place.isRoot())
        {
            table->add({"config", "-", "", "", "FileMConfigData=1"});
        }
        eachChildInOrder(session, place, [&](const Child& child) {
            constexpr std::size_t PAGE = 4096;
            if (++rows % PAGE == 0)
            {
                table->print(session.out());
                table = longTable();
            }
            table->add(longRow(session, child, facts));
        });
        table->print(session.out());
    }

    void printAny(Session& session, const Child& child, const std::optional<FactsOfFiles>& facts) const
    {
        if (_isJson)
        {
            printJson(session, child, facts);
        }
        else
        {
            printName(session, child);
        }
    }

    void printName(const Session& session, const Child& child) const
    {
        if (_endsInNull)
        {
            session.out() << (_isRecursive ? child.place.shortPath() : child.place.name()) << '\0';
            return;
        }
        const std::string marks = child.isNew ? "  +" : child.isLink ? "  @" : "";
        session.out() << paint(session, child, shownName(child.place, child.value)) << marks << '\n';
    }

    static std::string paint(const Session& session, const Child& child, const std::string& name)
    {
        return session.colours().paint(child.isNew                 ? Colour::New
                                       : child.isLink              ? Colour::Link
                                       : child.place.isDirectory() ? Colour::Directory
                                                                   : Colour::None,
                                       name);
    }

    static Table longTable() { return Table({{"KIND"}, {"SIZE", true}, {"CHANGED"}, {"MARKS"}, {"NAME"}}); }

    static Table::Row longRow(Session& session, const Child& child, const FactsOfFiles& facts)
    {
        std::string name = paint(session, child, shownInAllForms(child.place, child.value));
        if (child.isLink)
        {
            std::error_code error;
            const std::string path = child.place.path();
            name +=
                " -> " +
                shellQuoted(std::filesystem::read_symlink(path.substr(0, path.size() - 1), error).string());
        }
        if (child.place.isDirectory())
        {
            return {"dir", "-", changeTimeOf(child.place.path()), marksOf(session, child), name};
        }
        const FileFacts file = facts.of(child.place);
        return {"file", humanSize(file.size), file.time, marksOf(session, child), name};
    }

    static void printJson(Session& session, const Child& child, const std::optional<FactsOfFiles>& facts)
    {
        Json object = jsonOf(child.place, child.value);
        object["isLink"] = child.isLink;
        object["isNew"] = child.isNew;
        if (facts)
        {
            if (child.place.isFile())
            {
                const FileFacts file = facts->of(child.place);
                object["size"] = file.size;
                object["changed"] = file.time;
            }
            else if (child.place.isDirectory())
            {
                object["changed"] = changeTimeOf(child.place.path());
                object["marks"] = marksOf(session, child);
            }
        }
        session.out() << object.dump() << '\n';
    }

    void listUnlisted(Session& session, const Place& place) const
    {
        for (const auto& [name, why] : unlistedIn(session, place))
        {
            session.check();
            if (_endsInNull)
            {
                session.out() << name << '\0';
            }
            else if (_isJson)
            {
                Json object;
                object["class"] = nullptr;
                setText(object, "name", name);
                object["nameHex"] = hex(name);
                object["quoted"] = shellQuoted(name);
                setText(object, "why", why);
                session.out() << object.dump() << '\n';
            }
            else
            {
                const bool isGoing = why.starts_with("staged");
                session.out() << session.colours().paint(isGoing ? Colour::Going : Colour::None,
                                                         (isGoing ? "- " : ". ") + shellQuoted(name))
                              << "  (" << why << ")\n";
            }
        }
    }

    bool _isLong = false;
    bool _isRecursive = false;
    bool _showsAll = false;
    bool _endsInNull = false;
    bool _isJson = false;
    Words _places;
    bool _hasHeads = false;
    bool _isFirst = true;
};

} // namespace

std::unique_ptr<Verb> makeLs()
{
    return std::make_unique<Ls>();
}

} // namespace zolhost::filem
