#include "staging/Request.h"

#include "engine/NameForms.h"
#include "engine/Refusal.h"
#include "engine/Vetting.h"
#include "staging/DiskEntry.h"
#include "staging/Expression.h"
#include "staging/Protections.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <zol/common/RegularExpression.h>

namespace zolhost
{

namespace
{

namespace fs = std::filesystem;
using Kind = Request::Kind;

enum class OnDisk
{
    Nothing,
    Directory, ///< also by a link
    Something
};

OnDisk lookAt(const std::string& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) == 0)
    {
        return S_ISDIR(status.st_mode) ? OnDisk::Directory : OnDisk::Something;
    }
    return lstat(path.c_str(), &status) == 0 ? OnDisk::Something : OnDisk::Nothing;
}

bool isMade(const Plan& plan, const Place& place)
{
    return plan.madeDirectories().contains(place.path());
}

[[noreturn]] void refuse(Refusal::Kind kind, const Place& place, const std::string& why)
{
    throw Refusal(kind, place.dn(), why);
}

[[noreturn]] void refuseMissing(const Place& place)
{
    refuse(Refusal::Kind::NoSuchObject, place, "no such object");
}

/// Links on the way to a directory in which, for the sake of a place, something would change.
void vetLinks(const Place& place, const Place& directory)
{
    if (const std::string link = linkOnTheWay(directory); !link.empty())
    {
        const std::string where = isOutsideRoot(directory) ? " that leads out of the tree" : "";
        refuse(Refusal::Kind::Failed, place,
               link.substr(place.rootDirectory().size() + 1) + " is a symbolic link" + where +
                   "; --through-links goes through links");
    }
}

void vetNewDirectory(const Place& place, const Plan& plan, const Safeguards& safeguards)
{
    vetting::requireCreatable(place);
    vetting::requireReachable(place.parent());
    if (directoryNameOf(place.name()) != place.name())
    {
        refuse(Refusal::Kind::BadName, place,
               R"(no directory can be made with "\2B" in its name: it stands for a plus)");
    }
    if (!safeguards.throughLinks)
    {
        vetLinks(place, place.parent());
    }
    const Place above = place.parent();
    if (!isMade(plan, above) && lookAt(withoutSlash(above.path())) == OnDisk::Something)
    {
        refuse(Refusal::Kind::Failed, place, "what stands above it is no directory");
    }
    if (!isMade(plan, above) && lookAt(above.path()) != OnDisk::Directory)
    {
        refuse(Refusal::Kind::NoSuchObject, place, "the directory above it isn't there; -p makes it too");
    }
    const bool isGoing = plan.removedTrees().contains(place.path());
    if (isMade(plan, place) || (lookAt(place.path()) == OnDisk::Directory && !isGoing))
    {
        refuse(Refusal::Kind::Failed, place, "it is there already");
    }
    const std::string path = withoutSlash(place.path());
    if (lookAt(path) == OnDisk::Something && !plan.removedFiles().contains(path))
    {
        refuse(Refusal::Kind::Failed, place, "something else of this name is there");
    }
}

void vetDirectory(const Place& place, const Plan& plan)
{
    if (!isMade(plan, place))
    {
        const OnDisk found = lookAt(place.path());
        const std::string path = withoutSlash(place.path());
        if (found == OnDisk::Nothing && lookAt(path) == OnDisk::Nothing)
        {
            refuseMissing(place);
        }
        if (found != OnDisk::Directory)
        {
            refuse(Refusal::Kind::Failed, place, "it is no directory");
        }
    }
}

void vetFile(const Place& place)
{
    if (isMarkerName(place.name()))
    {
        refuse(Refusal::Kind::NoSuchObject, place, "no such object: it is a marker");
    }
    switch (lookAt(place.path()))
    {
    case OnDisk::Nothing:
        if (errno == EACCES)
        {
            refuse(Refusal::Kind::Failed, place, std::generic_category().message(EACCES));
        }
        refuseMissing(place);
    case OnDisk::Directory:
        refuse(Refusal::Kind::Failed, place,
               "it is a directory, which would go with all that is in it, whatever markers say");
    case OnDisk::Something:
        break;
    }
}

std::string relativeTo(const Place& place, const std::string& path)
{
    return path.substr(std::min(path.size(), place.rootDirectory().size() + 1));
}

std::string reasonAgainstMaking(const Place& place)
{
    const std::string name = place.name();
    if (const auto illegal = name.find_first_of("/|"); illegal != std::string::npos)
    {
        return std::string("FileGroup contains illegal character(") + name[illegal] + ")";
    }
    if (name.find_first_not_of('.') == std::string::npos)
    {
        return "FileGroup name not allowed (" + name + ")";
    }
    std::error_code error;
    if (fs::exists(place.parent().path() + ".filemnodirectorycreate", error))
    {
        return "FileGroup does not allow child FileGroup to be created";
    }
    return {};
}

std::string reasonAgainstLink(const Protections& found)
{
    return found.isLink ? "it is a symbolic link to " + found.linkTarget : std::string();
}

std::string reasonAgainstRemovingDirectory(const Place& place, const Plan& plan)
{
    const Protections found = protectionsOf(place.path(), plan);
    if (found.isLink)
    {
        return reasonAgainstLink(found);
    }
    if (!found.isThere && !isMade(plan, place))
    {
        return "it is gone";
    }
    if (!found.markers.empty())
    {
        return "FileGroup is not allowed to be deleted";
    }
    if (found.filesBelow != 0)
    {
        const std::string others = found.filesBelow == 1 ? ""
                                   : found.filesBelow == 2
                                       ? " and another file"
                                       : " and " + std::to_string(found.filesBelow - 1) + " other files";
        return "it isn't empty: " + relativeTo(place, found.aFileBelow) + others + " would remain";
    }
    return {};
}

} // namespace

void vet(const Request& request, const Plan& plan, const Safeguards& safeguards)
{
    const Place& place = request.place;
    if (request.kind == Kind::MakeDirectory)
    {
        vetNewDirectory(place, plan, safeguards);
        return;
    }
    if (request.kind == Kind::RemoveTree && place.isRoot())
    {
        if (!safeguards.rootTree)
        {
            refuse(Refusal::Kind::Failed, place,
                   "it is the root: all of the tree would go, the root directory too; --force-root does it");
        }
        return;
    }
    if (request.kind == Kind::RemoveMatching)
    {
        vetting::requireAction(place, "removeFile");
        vetting::requireReachable(place);
        if (const std::string why = whyNotForWholeName(request.expression); !why.empty())
        {
            refuse(Refusal::Kind::BadName, place, why);
        }
    }
    if (place.isFile())
    {
        vetFile(place);
    }
    else if (place.isDirectory() && !place.isRoot())
    {
        vetDirectory(place, plan);
    }
    if (request.kind != Kind::RemoveMatching)
    {
        vetting::requireDeletable(place);
    }
    if (!safeguards.throughLinks)
    {
        // a link itself is the component's to refuse, and what is in a link the host's
        vetLinks(place, request.kind == Kind::RemoveMatching ? place : place.parent());
    }
    if (request.kind == Kind::RemoveFile)
    {
        // a file that no DN reaches is told by an expression, in a directory that one does
        vetting::requireReachable(place.parent());
    }
    if (request.kind == Kind::RemoveTree)
    {
        vetting::requireReachable(place);
    }
    if (request.kind == Kind::RemoveDirectory)
    {
        vetting::requireReachableToDelete(place);
    }
}

std::string reasonAgainst(const Request& request, const Plan& plan)
{
    const Place& place = request.place;
    switch (request.kind)
    {
    case Kind::MakeDirectory:
        return reasonAgainstMaking(place);
    case Kind::RemoveDirectory:
        return reasonAgainstRemovingDirectory(place, plan);
    case Kind::RemoveFile:
    case Kind::RemoveTree: {
        const Protections found = protectionsOf(place.path(), plan);
        return !found.isLink && !found.isThere && !isMade(plan, place) ? "it is gone"
                                                                       : reasonAgainstLink(found);
    }
    case Kind::RemoveMatching:
        return isValidExpression(request.expression) ? "" : "Invalid regular expression";
    }
    return {};
}

Matches matchesOf(const Place& directory, const std::string& expression, const Plan& plan)
{
    Matches matches;
    const Zol::RegularExpression pattern(anchored(expression), REG_EXTENDED | REG_NOSUB);
    std::error_code error;
    for (fs::directory_iterator entry(directory.path(), error), end; !error && entry != end;
         entry.increment(error))
    {
        const std::string name = entry->path().filename().string();
        const std::string path = directory.path() + name;
        std::error_code vanished;
        if (entry->symlink_status(vanished).type() != fs::file_type::regular || isMarkerName(name) ||
            plan.removedFiles().contains(path) || plan.removedTrees().contains(path))
        {
            continue;
        }
        ++matches.visible;
        if (pattern.isExpressionValid() && pattern.match(name, 0))
        {
            matches.names.push_back(name);
        }
    }
    std::ranges::sort(matches.names);
    return matches;
}

} // namespace zolhost
