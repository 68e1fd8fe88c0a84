#include "model/Walk.h"

#include "model/Names.h"

namespace zolmodel
{

Walk::Walk(const Disk& disk, const Surroundings& surroundings, const Changes& changes,
           const Location& directory, Wanted wanted)
    : _disk(disk)
    , _changes(changes)
    , _directory(directory)
    , _wanted(wanted)
{
    if (wanted == Wanted::Directories)
    {
        _pending = changes.createdDirectories;
    }
    const std::string text = directory.textWithoutSlash();
    const Node* node = disk.followed(text);
    if (node == nullptr)
    {
        return;
    }
    if (node->kind == Kind::Directory)
    {
        if (node->foreign)
        {
            throw OutOfReach(text);
        }
        _names = surroundings.diskOrder(text);
        _additions = node->additions;
        _additionsAtOpening = *_additions;
    }
    else
    {
        end();
    }
}

std::optional<Location> Walk::next()
{
    while (_position < _names.size())
    {
        Location found;
        switch (look(_names[_position++], found))
        {
        case Step::Yields:
            return found;
        case Step::Breaks:
            end();
            return std::nullopt;
        case Step::Skips:
            break;
        }
    }
    auto created = nextCreated();
    if (!created)
    {
        end();
    }
    return created;
}

bool Walk::isUncertain() const
{
    return _position == _names.size() && _additions != nullptr && *_additions != _additionsAtOpening;
}

Walk::Step Walk::look(const std::string& name, Location& found)
{
    found = _directory.entry(name);
    const std::string text = found.text();
    const bool isLink = _disk.isLink(text);
    const bool isDirectoryLink = isLink && leadsToDirectory(text);
    if (isLink && !isDirectoryLink)
    {
        return Step::Skips;
    }
    const Node* node = _disk.followed(text);
    if (node == nullptr)
    {
        return Step::Breaks;
    }
    if (node->kind == Kind::File && !isMarker(name))
    {
        _lastWasFile = true;
    }
    else if (node->kind == Kind::Directory || isDirectoryLink)
    {
        _lastWasFile = false;
        found = found.asDirectory();
    }
    else
    {
        return Step::Skips;
    }
    const bool isWanted = _lastWasFile == (_wanted == Wanted::Files);
    return isWanted && !_changes.isDeleted(found) ? Step::Yields : Step::Skips;
}

// The target is looked up as it stands in the link, so a relative one from the working directory.
bool Walk::leadsToDirectory(const std::string& link) const
{
    std::string target = _disk.unfollowed(link)->target;
    if (target.size() > 1 && target.back() == '/')
    {
        target.pop_back();
    }
    return _disk.isDirectory(target);
}

std::optional<Location> Walk::nextCreated()
{
    while (!_pending.empty())
    {
        const Location candidate = *_pending.begin();
        _pending.erase(_pending.begin());
        if (candidate.parent() == _directory)
        {
            return candidate;
        }
    }
    return std::nullopt;
}

void Walk::end()
{
    _position = _names.size();
    _pending.clear();
    _directory = Location();
}

} // namespace zolmodel
