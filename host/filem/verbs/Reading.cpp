#include "filem/verbs/Reading.h"

#include "engine/Refusal.h"
#include "engine/Vetting.h"
#include "filem/Session.h"
#include "filem/output/PrintableText.h"
#include "filem/output/Quoting.h"
#include "staging/Protections.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <system_error>
#include <tuple>

namespace zolhost::filem
{

namespace
{

namespace fs = std::filesystem;

/// A directory with more entries isn't sorted, so that the first is shown at once.
constexpr std::size_t SORTED = 4096;

[[noreturn]] void refuseMissing(const Place& place, const std::string& why = "no such object")
{
    throw Refusal(Refusal::Kind::NoSuchObject, place.dn(), why);
}

std::optional<struct stat> statusOf(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 ? std::optional(status) : std::nullopt;
}

std::string whyUnlisted(const Session& session, const Plan& plan, const Place& place,
                        const fs::directory_entry& entry)
{
    const std::string name = entry.path().filename().string();
    const std::string path = place.path() + name;
    std::error_code error;
    if (plan.removedTrees().contains(path + '/') || plan.removedTrees().contains(path) ||
        plan.removedFiles().contains(path))
    {
        return "staged to be removed";
    }
    if (entry.is_symlink(error))
    {
        const fs::path target = fs::read_symlink(entry.path(), error);
        return "link to " + shellQuoted(target.string());
    }
    if (isMarkerName(name) && entry.is_regular_file(error))
    {
        return "marker";
    }
    if (place.path() == session.rootDirectory() + "/" && entry.is_regular_file(error))
    {
        return "a file in the root is no object";
    }
    return entry.is_regular_file(error) || entry.is_directory(error) ? "not listed by the component"
                                                                     : "no regular file";
}

/// 0 if the directory can be read.
int errorOfReading(const std::string& directory)
{
    std::error_code error;
    const fs::directory_iterator first(directory, error);
    return error.value();
}

/// What is in a directory that is to be removed is listed as it is on disk.
void warnIfStagedToGo(Session& session, const Place& place)
{
    const auto& removed = session.plan().removedTrees();
    for (Place above = place;; above = above.parent())
    {
        const bool isGoing = removed.contains(above.path()) ||
                             (above.isFile() && session.plan().removedFiles().contains(above.path()));
        if (isGoing)
        {
            session.warn(shellQuoted(above.shortPath()) + " is staged to be removed");
        }
        if (above.isRoot())
        {
            return;
        }
    }
}

} // namespace

void requireObject(Session& session, const Place& place)
{
    if (place.names().empty())
    {
        return;
    }
    if (place.isDirectory())
    {
        if (!PlaceFinder(session.rootDirectory(), session.plan()).isDirectory(place))
        {
            refuseMissing(place);
        }
        vetting::requireReachable(place);
        if (const int error = errorOfReading(place.path()); error != 0 && error != ENOENT)
        {
            throw Refusal(Refusal::Kind::Failed, place.dn(), std::generic_category().message(error));
        }
        warnIfStagedToGo(session, place);
        return;
    }
    const auto status = statusOf(place.path());
    if (status && S_ISDIR(status->st_mode))
    {
        throw Refusal(Refusal::Kind::Failed, place.dn(), "it is a directory");
    }
    if (place.parent().isRoot())
    {
        refuseMissing(place, "no such object: files in the root are none");
    }
    if (isMarkerName(place.name()))
    {
        refuseMissing(place, "no such object: it is a marker");
    }
    if (!status)
    {
        if (errno == EACCES)
        {
            throw Refusal(Refusal::Kind::Failed, place.dn(), std::generic_category().message(EACCES));
        }
        refuseMissing(place);
    }
    warnIfStagedToGo(session, place);
}

bool hasMoreEntriesThan(std::size_t many, const std::string& directory)
{
    std::size_t count = 0;
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end && count <= many;
         entry.increment(error))
    {
        ++count;
    }
    return count > many;
}

void eachChildInOrder(Session& session, const Place& place,
                      const std::function<void(const Child& child)>& visit)
{
    const bool isSorted = !hasMoreEntriesThan(SORTED, place.path());
    std::vector<Child> held;
    const auto take = [&](const Child& child) {
        session.check();
        if (isSorted)
        {
            held.push_back(child);
        }
        else
        {
            visit(child);
        }
        return true;
    };
    const auto objects = session.objects();
    if (isSorted)
    {
        eachChild(objects, session.plan(), place, take);
    }
    else
    {
        // a walk for directories would go past all files before the first line
        if (!place.isRoot())
        {
            eachFile(objects, session.plan(), place, take);
        }
        eachDirectory(objects, session.plan(), place, take);
    }
    std::ranges::sort(held, {}, [](const Child& child) {
        return std::tuple(child.place.isFile(), child.value, child.place.name());
    });
    std::ranges::for_each(held, visit);
    session.renewReads();
}

bool isGoneDownTo(const Session& session, const Child& child)
{
    if (!child.place.isDirectory() || child.isLink)
    {
        return false;
    }
    if (!child.place.isReachable())
    {
        session.warn(shellQuoted(child.place.shortPath()) + " is left out: no name reaches it");
        return false;
    }
    if (const int error = errorOfReading(child.place.path()); error != 0 && !child.isNew)
    {
        session.warn(shellQuoted(child.place.shortPath()) +
                     " is left out: " + std::generic_category().message(error));
        return false;
    }
    return true;
}

std::vector<Place> directoriesIn(Session& session, const Place& place)
{
    std::vector<Place> directories;
    eachDirectory(session.objects(), session.plan(), place, [&](const Child& child) {
        session.check();
        if (isGoneDownTo(session, child))
        {
            directories.push_back(child.place);
        }
        return true;
    });
    std::ranges::sort(directories, {}, &Place::name);
    session.renewReads();
    return directories;
}

std::vector<Unlisted> unlistedIn(Session& session, const Place& place)
{
    std::set<std::string> listed;
    const Plan& plan = session.plan();
    eachChild(session.objects(), plan, place, [&](const Child& child) {
        session.check();
        listed.insert(child.place.name());
        return true;
    });
    std::vector<Unlisted> unlisted;
    std::error_code error;
    for (fs::directory_iterator entry(place.path(), error), end; !error && entry != end;
         entry.increment(error))
    {
        std::string name = entry->path().filename().string();
        if (!listed.contains(name))
        {
            unlisted.push_back({name, whyUnlisted(session, plan, place, *entry)});
        }
    }
    std::ranges::sort(unlisted, {}, &Unlisted::name);
    return unlisted;
}

std::string marksOf(Session& session, const Child& child)
{
    std::string marks = child.isNew ? "+" : "";
    marks += child.isLink ? "@" : "";
    if (!child.place.isDirectory() || !child.place.isReachable())
    {
        return marks;
    }
    std::error_code error;
    for (fs::directory_iterator entry(child.place.path(), error), end; !error && entry != end;
         entry.increment(error))
    {
        if (isMarkerName(entry->path().filename().string()))
        {
            marks += "m";
            break;
        }
    }
    const auto policies = session.objects().attribute(child.place.dn(), "reservedByPolicy");
    return policies.values.empty() ? marks : marks + "p";
}

std::string changeTimeOf(const std::string& path)
{
    const auto status = statusOf(path);
    if (!status)
    {
        return {};
    }
    std::tm time = {};
    localtime_r(&status->st_ctime, &time);
    std::array<char, 32> text{};
    std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &time);
    return text.data();
}

std::optional<std::uint64_t> sizeOnDisk(const std::string& path)
{
    const auto status = statusOf(path);
    return status && S_ISREG(status->st_mode) ? std::optional(static_cast<std::uint64_t>(status->st_size))
                                              : std::nullopt;
}

std::string shownName(const Place& place, const std::string& value)
{
    if (place.names().empty())
    {
        return place.isRoot() ? "/" : "FileMConfigData=1";
    }
    return shellQuoted(place.isDirectory() ? value + "/" : value);
}

std::string shownInAllForms(const Place& place, const std::string& value)
{
    const std::string shown = shownName(place, value);
    const std::string name = place.name();
    const bool isOdd = name != value || printable(name) != name;
    return isOdd && !name.empty() ? shown + "  " + hex(name) + "  " + shellQuoted(name) : shown;
}

Json jsonOf(const Place& place, const std::string& value)
{
    Json object;
    object["class"] = place.moClass().name;
    setText(object, "dn", place.dn());
    setText(object, "value", value);
    setText(object, "name", place.name());
    object["nameHex"] = hex(place.name());
    object["quoted"] = shellQuoted(place.shortPath());
    return object;
}

} // namespace zolhost::filem
