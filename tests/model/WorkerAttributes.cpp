#include "model/DnRules.h"
#include "model/Names.h"
#include "model/Values.h"
#include "model/Worker.h"

#include <algorithm>
#include <array>
#include <ctime>

namespace zolmodel
{

namespace
{

std::string printedRoot(const std::string& output)
{
    const std::size_t first = output.find_first_not_of(" \t\n\v\f\r");
    return first == std::string::npos
               ? ""
               : output.substr(first, output.find_last_not_of(" \t\n\v\f\r") - first + 1);
}

} // namespace

void Worker::attribute(const std::string& dn, const std::string& name, Outcome& outcome)
{
    const Read read = readAttribute(dn, name);
    outcome.code = read.code;
    outcome.value = read.code == ZolReturnOk ? read.value : "nothing";
}

void Worker::attributes(const std::string& dn, const std::vector<std::string>& names, Outcome& outcome)
{
    for (const auto& name : names)
    {
        const Read read = readAttribute(dn, name);
        if (read.code != ZolReturnOk)
        {
            outcome.code = read.code;
            outcome.value = "nothing";
            return;
        }
        outcome.value += read.value + "; ";
    }
    outcome.value += "end";
}

Worker::Read Worker::readAttribute(const std::string& dn, const std::string& name) const
{
    const std::string className = classOf(dn);
    if (className == "FileMConfigData")
    {
        return readOfConfiguration(dn, name);
    }
    Location location = locationOf(dn);
    if (isMarker(location.fileName()))
    {
        return {ZolReturnNoSuch, ""};
    }
    if (!_world.exists(location) && !_changes.createdDirectories.contains(location))
    {
        if (const auto found = searched(dn))
        {
            location = locationOf(*found);
        }
    }
    if (className == "FileInformation")
    {
        return readOfFile(dn, name, location);
    }
    if (className == "FileGroup")
    {
        return readOfGroup(dn, name, location);
    }
    return {ZolReturnFailure, ""};
}

Worker::Read Worker::readOfGroup(const std::string& dn, const std::string& name,
                                 const Location& location) const
{
    if (name == "fileGroupId")
    {
        return {ZolReturnOk, stringValue(lastValueOf(dn))};
    }
    if (name == "internalHousekeeping")
    {
        return {ZolReturnOk, boolValue(_world.hasMarker(location, ".filemnohousekeeping"))};
    }
    if (name == "reservedByPolicy")
    {
        std::vector<std::string> reservers;
        for (const auto& policy : _world.surroundings.policies)
        {
            const auto times = std::count(policy.groups.begin(), policy.groups.end(), dn);
            reservers.insert(reservers.end(), static_cast<std::size_t>(times), policy.dn);
        }
        return {ZolReturnOk, referencesValue(reservers)};
    }
    return name == "files" ? readFiles(dn) : Read{ZolReturnNoSuch, ""};
}

Worker::Read Worker::readOfFile(const std::string& dn, const std::string& name,
                                const Location& location) const
{
    if (name == "fileInformationId")
    {
        return {ZolReturnOk, stringValue(lastValueOf(dn))};
    }
    if (name == "modificationTime")
    {
        return {ZolReturnOk, stringValue(_world.exists(location) ? timeOf(location) : "")};
    }
    if (name == "size")
    {
        const std::string text = location.textWithoutSlash();
        const Node* node = _world.disk.followed(text);
        if (node == nullptr)
        {
            return {ZolReturnOk, intValue(0)};
        }
        const bool isFile = node->kind == Kind::File;
        return {ZolReturnOk, intValue(isFile ? node->size : _world.surroundings.status(text).size)};
    }
    if (name == "type")
    {
        return {ZolReturnOk, stringValue(location.extension())};
    }
    return name == "open" ? Read{ZolReturnOk, boolValue(false)} : Read{ZolReturnNoSuch, ""};
}

Worker::Read Worker::readOfConfiguration(const std::string& dn, const std::string& name) const
{
    if (name == "fileMConfigDataId")
    {
        return {ZolReturnOk, stringValue(lastValueOf(dn))};
    }
    if (name == "internalRoot")
    {
        return {ZolReturnOk, stringValue(printedRoot(_world.surroundings.commandOutput))};
    }
    return {ZolReturnNoSuch, ""};
}

Worker::Read Worker::readFiles(const std::string& dn) const
{
    const Location directory = locationOf(dn);
    if (_changes.createdDirectories.contains(directory))
    {
        return {ZolReturnOk, filesValue({})};
    }
    const Node* node = _world.disk.followed(directory.textWithoutSlash());
    if (node == nullptr || node->kind != Kind::Directory)
    {
        return {ZolReturnFailure, ""};
    }
    if (node->foreign)
    {
        throw OutOfReach(dn);
    }
    std::vector<ListedFile> files;
    for (const auto& child : node->children) // in the order of the names
    {
        const Location location = directory.entry(child.first);
        const Node* target = _world.disk.followed(location.text());
        if (target == nullptr)
        {
            return {ZolReturnFailure, ""};
        }
        if (target->kind == Kind::File && !_changes.isDeleted(location) && !isMarker(child.first))
        {
            files.push_back({child.first, timeOf(location), location.extension(), target->size});
        }
    }
    return {ZolReturnOk, filesValue(files)};
}

std::string Worker::timeOf(const Location& location) const
{
    if (!_world.disk.exists(location.text()))
    {
        return ""; // a closing slash behind what is no directory
    }
    const std::time_t changed = _world.surroundings.status(location.text()).changed;
    std::tm broken = {};
    localtime_r(&changed, &broken);
    std::array<char, 64> text = {};
    text.at(std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%S", &broken)) = '\0';
    return text.data();
}

} // namespace zolmodel
