#include "engine/Place.h"

#include "engine/DistinguishedName.h"
#include "engine/NameForms.h"

#include <filesystem>
#include <utility>

namespace zolhost
{

namespace
{

std::string shownValue(const std::string& name, bool isDirectory)
{
    return isDirectory ? fileGroupValueOf(name) : fileInformationValueOf(name);
}

/// What is asked for: the value that is shown, where the component finds the same name by it.
std::string valueToAskFor(const std::string& name, bool isDirectory)
{
    const std::string shown = isDirectory ? fileGroupValueOf(name) : name;
    return isDirectory && directoryNameOf(shown) == name ? shown : name;
}

std::string withoutClosingSlash(std::string path)
{
    if (path.size() > 1 && path.ends_with('/'))
    {
        path.pop_back();
    }
    return path;
}

} // namespace

Place::Place(std::string rootDirectory)
    : _rootDirectory(std::move(rootDirectory))
    , _class(findMoClass("FileM"))
{}

Place Place::directory(std::string nameOnDisk) const
{
    Place below = *this;
    below._names.push_back(std::move(nameOnDisk));
    below._class = findMoClass("FileGroup");
    return below;
}

Place Place::file(std::string nameOnDisk) const
{
    Place below = *this;
    below._names.push_back(std::move(nameOnDisk));
    below._class = findMoClass("FileInformation");
    return below;
}

Place Place::configuration() const
{
    Place place(_rootDirectory);
    place._class = findMoClass("FileMConfigData");
    return place;
}

Place Place::parent() const
{
    Place above(_rootDirectory);
    if (_names.size() > 1)
    {
        above._names.assign(_names.begin(), _names.end() - 1);
        above._class = findMoClass("FileGroup");
    }
    return above;
}

bool Place::isRoot() const
{
    return _class->name == "FileM";
}

bool Place::isDirectory() const
{
    return isRoot() || _class->name == "FileGroup";
}

bool Place::isFile() const
{
    return _class->name == "FileInformation";
}

std::string Place::name() const
{
    return _names.empty() ? std::string() : _names.back();
}

std::string Place::value() const
{
    if (_names.empty())
    {
        return std::string(_class->onlyValue);
    }
    return shownValue(_names.back(), !isFile());
}

std::string Place::path() const
{
    std::string path = _rootDirectory;
    for (const auto& name : _names)
    {
        path += '/';
        path += name;
    }
    return isFile() ? path : path + '/';
}

std::string Place::shortPath() const
{
    if (_names.empty() && !isRoot())
    {
        return std::string(_class->name) + "=" + std::string(_class->onlyValue);
    }
    std::string path;
    for (const auto& name : _names)
    {
        path += path.empty() ? "" : "/";
        path += name;
    }
    return path.empty() ? "/" : path;
}

std::string Place::dn() const
{
    return dnOf(valueToAskFor);
}

std::string Place::shownDn() const
{
    const std::string shown = dnOf(shownValue);
    const std::string here = withoutClosingSlash(path());
    const bool isFound =
        pathOfDn(shown, _rootDirectory) == here || pathToDelete(shown, _rootDirectory) == here;
    return isFound ? shown : dn();
}

std::string Place::dnOf(std::string (*valueOf)(const std::string& name, bool isDirectory)) const
{
    std::string dn(DistinguishedName::ROOT);
    if (_names.empty())
    {
        return isRoot() ? dn : dn + ",FileMConfigData=1";
    }
    for (std::size_t i = 0; i < _names.size(); ++i)
    {
        const bool isDirectoryName = i + 1 < _names.size() || isDirectory();
        dn += isDirectoryName ? ",FileGroup=" : ",FileInformation=";
        dn += valueOf(_names[i], isDirectoryName);
    }
    return dn;
}

bool Place::isReachable() const
{
    return pathOfDn(dn(), _rootDirectory) == withoutClosingSlash(path()) || _names.empty();
}

bool Place::isReachableToDelete() const
{
    return isReachable() && pathToDelete(dn(), _rootDirectory) == withoutClosingSlash(path());
}

std::string linkOnTheWay(const Place& place)
{
    std::string path = place.rootDirectory();
    const std::size_t directories = place.names().size() - (place.isFile() ? 1 : 0);
    for (std::size_t i = 0; i < directories; ++i)
    {
        path += '/';
        path += place.names()[i];
        std::error_code error;
        if (std::filesystem::is_symlink(std::filesystem::symlink_status(path, error)))
        {
            return path;
        }
    }
    return {};
}

bool isOutsideRoot(const Place& place)
{
    namespace fs = std::filesystem;
    std::error_code error;
    const auto directory = place.isFile() ? place.parent().path() : place.path();
    const fs::path real = fs::weakly_canonical(directory, error);
    if (error)
    {
        return false;
    }
    const fs::path root = fs::weakly_canonical(place.rootDirectory(), error);
    const auto [inRoot, inReal] = std::mismatch(root.begin(), root.end(), real.begin(), real.end());
    return inRoot != root.end();
}

} // namespace zolhost
