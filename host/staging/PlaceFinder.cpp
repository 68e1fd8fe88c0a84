#include "staging/PlaceFinder.h"

#include "engine/DistinguishedName.h"
#include "engine/NameForms.h"
#include "engine/Refusal.h"
#include "staging/DiskEntry.h"

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>
#include <utility>

namespace zolhost
{

namespace
{

namespace fs = std::filesystem;

[[noreturn]] void refuse(std::string_view name, const std::string& why)
{
    throw Refusal(Refusal::Kind::BadName, std::string(name), why);
}

bool leadsToDirectory(const std::string& path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

/// Names in the directory that are shown as this value.
std::vector<std::string> namesShownAs(std::string_view value, const std::string& directory, bool isDirectory)
{
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end; entry.increment(error))
    {
        std::string name = entry->path().filename().string();
        const std::string shown = isDirectory ? fileGroupValueOf(name) : fileInformationValueOf(name);
        if (shown == value && leadsToDirectory(entry->path().string()) == isDirectory)
        {
            names.push_back(std::move(name));
        }
    }
    std::ranges::sort(names);
    return names;
}

} // namespace

bool isDn(std::string_view text)
{
    const auto equals = text.find('=');
    return equals != std::string_view::npos &&
           (text.starts_with("ManagedElement=") || findMoClass(text.substr(0, equals)) != nullptr);
}

PlaceFinder::PlaceFinder(std::string rootDirectory, const Plan& plan)
    : _rootDirectory(std::move(rootDirectory))
    , _plan(plan)
{}

Place PlaceFinder::find(std::string_view text, const Place& from, Wanted wanted) const
{
    return isDn(text) ? findDn(text) : findPath(text, from, wanted);
}

bool PlaceFinder::isDirectory(const Place& place) const
{
    return place.isDirectory() &&
           (leadsToDirectory(place.path()) || _plan.madeDirectories().contains(place.path()));
}

Place PlaceFinder::findDn(std::string_view text) const
{
    const auto dn = DistinguishedName::parse(text);
    Place place(_rootDirectory);
    for (const auto& part : dn.parts())
    {
        if (part.moClass->name == "FileMConfigData")
        {
            return place.configuration();
        }
        const bool isFile = part.moClass->name == "FileInformation";
        place = below(place, part.value, isFile ? Wanted::File : Wanted::Directory, text, true);
    }
    return place;
}

Place PlaceFinder::findPath(std::string_view text, const Place& from, Wanted wanted) const
{
    if (text.empty())
    {
        refuse(text, "the name is empty");
    }
    if (text.find('\0') != std::string_view::npos)
    {
        refuse(text, "a name must not hold a zero byte");
    }
    Place place = text.starts_with('/') ? Place(_rootDirectory) : from;
    std::string_view rest = text;
    while (!rest.empty())
    {
        const auto slash = std::min(rest.find('/'), rest.size());
        const std::string_view value = rest.substr(0, slash);
        const bool isLast = slash == rest.size();
        rest.remove_prefix(isLast ? slash : slash + 1);
        if (value == "..")
        {
            if (place.isRoot())
            {
                refuse(text, "it would leave the tree");
            }
            place = place.parent();
        }
        else if (!value.empty() && value != ".")
        {
            place = below(place, value, isLast ? wanted : Wanted::Directory, text, false);
        }
    }
    return place;
}

Place PlaceFinder::below(const Place& parent, std::string_view value, Wanted wanted, std::string_view whole,
                         bool isInDn) const
{
    if (!parent.isDirectory())
    {
        refuse(whole, "there is nothing below a " + std::string(parent.moClass().name));
    }
    const std::string directory = parent.path();
    const std::string text(value);
    const std::string decoded = directoryNameOf(value);
    const auto isDirectoryName = [&](const std::string& name) {
        return _plan.madeDirectories().contains(directory + name + '/') || leadsToDirectory(directory + name);
    };
    // the name on disk wins, but a DN means what a component takes it for
    if (wanted != Wanted::File && !isInDn && isDirectoryName(text))
    {
        return parent.directory(text);
    }
    if (wanted != Wanted::Directory && lookUp(directory + text))
    {
        return parent.file(text);
    }
    if (wanted != Wanted::File && isDirectoryName(decoded))
    {
        return parent.directory(decoded);
    }
    const auto directories =
        wanted == Wanted::File ? std::vector<std::string>() : namesShownAs(value, directory, true);
    const auto files =
        wanted == Wanted::Directory ? std::vector<std::string>() : namesShownAs(value, directory, false);
    if (directories.size() + files.size() > 1)
    {
        auto names = directories;
        names.insert(names.end(), files.begin(), files.end());
        refuse(whole, "it is the value of more than one name: " + names[0] + " and " + names[1]);
    }
    if (!directories.empty())
    {
        return parent.directory(directories.front());
    }
    if (!files.empty())
    {
        return parent.file(files.front());
    }
    // in the root no file can be an object
    const bool isDirectory = wanted == Wanted::Directory || (wanted == Wanted::Anything && parent.isRoot());
    return isDirectory ? parent.directory(decoded) : parent.file(text);
}

} // namespace zolhost
