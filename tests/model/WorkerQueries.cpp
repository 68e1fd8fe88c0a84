#include "model/DnRules.h"
#include "model/Names.h"
#include "model/Worker.h"

#include <utility>

namespace zolmodel
{

namespace
{

std::optional<Wanted> wantedBy(const std::string& className)
{
    if (className == "FileGroup")
    {
        return Wanted::Directories;
    }
    return className == "FileInformation" ? std::optional(Wanted::Files) : std::nullopt;
}

} // namespace

std::optional<unsigned long long> Worker::newIterator(const std::string& parentDn,
                                                      const std::string& className)
{
    if (className == "FileMConfigData")
    {
        _configurations[++_world.lastIteratorId] = false;
        return _world.lastIteratorId;
    }
    const auto wanted = wantedBy(className);
    if (!wanted)
    {
        return std::nullopt;
    }
    auto opened = std::make_unique<Walk>(walk(locationOf(parentDn), *wanted));
    _walks[++_world.lastIteratorId] = std::move(opened);
    return _world.lastIteratorId;
}

void Worker::next(unsigned long long iterator, Outcome& outcome)
{
    outcome.value = "null";
    if (const auto found = _walks.find(iterator); found != _walks.end())
    {
        auto stepped = std::make_unique<Walk>(*found->second); // in its place only if the step is in reach
        const auto entry = stepped->next();
        found->second = std::move(stepped);
        const Walk& walked = *found->second;
        outcome.valueIsUncertain = walked.isUncertain();
        if (entry)
        {
            const std::string name = entry->asFile().fileName();
            outcome.value = "name " + (walked.lastWasFile() ? fileValue(name) : groupValue(name));
        }
    }
    else if (const auto configuration = _configurations.find(iterator);
             configuration != _configurations.end() && !configuration->second)
    {
        configuration->second = true;
        outcome.value = "name 1";
    }
}

unsigned long long Worker::count(const std::string& dn, const std::string& className)
{
    const auto wanted = wantedBy(className);
    unsigned long long result = 0;
    if (wanted)
    {
        for (Walk walked = walk(locationOf(dn), *wanted); walked.next();)
        {
            ++result;
        }
    }
    return result;
}

bool Worker::exists(const std::string& dn)
{
    if (!isAcceptable(dn))
    {
        return false;
    }
    const Location location = locationOf(dn);
    const bool isGroup = classOf(dn) == "FileGroup";
    const Node* node = _world.disk.followed(location.textWithoutSlash());
    if (!isMarker(location.fileName()) && node != nullptr && (node->kind == Kind::Directory) == isGroup)
    {
        return true;
    }
    return isGroup && _changes.createdDirectories.contains(location);
}

std::optional<std::string> Worker::searched(const std::string& dn) const
{
    for (const auto& candidate : questionMarkCandidates())
    {
        const std::string tried = replacedAll(dn, "?\?", candidate);
        if (_world.exists(locationOf(tried)))
        {
            return tried;
        }
    }
    return std::nullopt;
}

Location Worker::locationOf(const std::string& dn) const
{
    return zolmodel::locationOf(dn, _world.root);
}

Walk Worker::walk(const Location& directory, Wanted wanted) const
{
    return {_world.disk, _world.surroundings, _changes, directory, wanted};
}

} // namespace zolmodel
