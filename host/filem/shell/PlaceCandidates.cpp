#include "filem/shell/PlaceCandidates.h"

#include "engine/DistinguishedName.h"
#include "engine/NameForms.h"
#include "engine/Refusal.h"
#include "filem/Session.h"
#include "filem/output/Interrupt.h"
#include "filem/output/Quoting.h"
#include "staging/Children.h"

#include <array>

namespace zolhost::filem
{

namespace
{

/// More are of no use to anybody who reads them.
constexpr std::size_t MOST = 10'000;

/// By which the child is found, the best first: the value that is listed, unless it could be another's.
std::array<std::string, 2> wordsFor(const Child& child)
{
    const std::string name = child.place.name();
    const bool isFile = child.place.isFile();
    const bool isSurelyFoundByValue = !isFile && directoryNameOf(child.value) == name;
    const bool isFoundByName = isFile || directoryNameOf(name) == name;
    if (isSurelyFoundByValue || !isFoundByName)
    {
        return {child.value, isFoundByName ? name : child.value};
    }
    return {name, child.value};
}

class Search
{
public:
    Search(Session& session, bool directoriesOnly)
        : _session(session)
        , _directoriesOnly(directoriesOnly)
    {}

    Candidates paths(const std::string& typed)
    {
        const auto slash = typed.rfind('/');
        _before = slash == std::string::npos ? "" : typed.substr(0, slash + 1);
        _typed = typed.substr(_before.size());
        const Place parent =
            _before.empty() ? _session.here() : _session.place(_before, PlaceFinder::Wanted::Directory);
        if (_typed == "..")
        {
            add("..", "/");
        }
        // of very many, files come one by one and can be left at any time; a call that looks for directories
        // can't
        addFiles(parent);
        if (!_found.isCut)
        {
            addDirectories(parent, "/");
        }
        return std::move(_found);
    }

    Candidates dns(const std::string& typed)
    {
        const auto comma = typed.rfind(',');
        _before = comma == std::string::npos ? "" : typed.substr(0, comma + 1);
        const std::string part = typed.substr(_before.size());
        const Place parent =
            _before.empty() ? Place(_session.rootDirectory()) : _session.place(typed.substr(0, comma));
        const auto equals = part.find('=');
        if (equals == std::string::npos)
        {
            _typed = part;
            addClasses(parent);
            return std::move(_found);
        }
        _before += part.substr(0, equals + 1);
        _typed = part.substr(equals + 1);
        _isDn = true;
        const std::string className = part.substr(0, equals);
        if (className == "FileGroup")
        {
            addDirectories(parent, "");
        }
        else if (className == "FileInformation")
        {
            addFiles(parent);
        }
        else if (className == "FileMConfigData" && parent.isRoot() && !_directoriesOnly)
        {
            add("1", " ");
        }
        return std::move(_found);
    }

private:
    void addDirectories(const Place& parent, const std::string& end)
    {
        if (parent.isDirectory() && parent.isReachable())
        {
            eachDirectory(_session.objects(), _session.plan(), parent,
                          [&](const Child& child) { return take(child, end); });
        }
    }

    void addFiles(const Place& parent)
    {
        // a file in the root is no object
        if (!_directoriesOnly && parent.isDirectory() && parent.isReachable() && !parent.isRoot())
        {
            eachFile(_session.objects(), _session.plan(), parent,
                     [&](const Child& child) { return take(child, " "); });
        }
    }

    bool take(const Child& child, const std::string& end)
    {
        interrupt::check();
        for (const auto& word : wordsFor(child))
        {
            // a comma ends a value of a DN
            const bool isTaken = word.starts_with(_typed) && (!_isDn || word.find(',') == std::string::npos);
            if (isTaken)
            {
                add(word, end);
                break;
            }
        }
        _found.isCut = _found.list.size() > MOST;
        return !_found.isCut;
    }

    void addClasses(const Place& parent)
    {
        for (const auto className : parent.moClass().children)
        {
            if (className == "FileGroup" || !_directoriesOnly)
            {
                add(std::string(className), "=");
            }
        }
    }

    /// An end that is a blank isn't part of the word.
    void add(const std::string& word, const std::string& end)
    {
        if (word.starts_with(_typed))
        {
            const bool isWhole = end == " ";
            const std::string whole = isWhole ? word : word + end;
            _found.list.push_back({_before + whole, shellQuoted(whole), isWhole});
        }
    }

    Session& _session;
    const bool _directoriesOnly;
    std::string _before; // what the candidates have in common
    std::string _typed;  // of what comes behind that
    bool _isDn = false;
    Candidates _found;
};

} // namespace

Candidates placesFor(const std::string& typed, bool directoriesOnly, Session& session)
{
    Candidates found;
    try
    {
        if (isDn(typed))
        {
            found = Search(session, directoriesOnly).dns(typed);
        }
        else
        {
            found = Search(session, directoriesOnly).paths(typed);
            // whoever has begun nothing hardly thinks of a DN
            const bool mayBeClass = !typed.empty() && typed.find('/') == std::string::npos;
            const auto classes = mayBeClass ? Search(session, directoriesOnly).dns(typed) : Candidates();
            found.list.insert(found.list.end(), classes.list.begin(), classes.list.end());
        }
    }
    catch (const Refusal&)
    {
        // nothing is below what is no place
    }
    if (!typed.empty())
    {
        found.add(typed, DistinguishedName::ROOT, false);
    }
    return found;
}

} // namespace zolhost::filem
