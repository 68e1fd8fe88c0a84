#include "model/Worker.h"

#include <utility>

namespace zolmodel
{

namespace
{

const mode_t SET_GROUP_ID = 02000;
const mode_t MODE_OF_NEW = 0770;
const mode_t MODE_OF_ANCESTORS = 0755; // what the file-creation mask of the comparison leaves

} // namespace

ZolReturnT Worker::commit()
{
    const Changes changes = std::exchange(_changes, {});
    try
    {
        return apply(changes);
    }
    catch (const OutOfReach&)
    {
        _world.disk.giveUpChange();
        return ZolReturnOk;
    }
}

ZolReturnT Worker::apply(const Changes& changes)
{
    for (const auto& file : changes.deletedFiles)
    {
        _world.disk.remove(file.textWithoutSlash());
    }
    for (const auto& directory : changes.createdDirectories)
    {
        if (!makeDirectories(directory))
        {
            return ZolReturnFailure;
        }
        makeModed(directory);
    }
    for (const auto& directory : changes.deletedDirectories)
    {
        _world.disk.remove(directory.textWithoutSlash());
    }
    return ZolReturnOk;
}

void Worker::abort()
{
    _changes = {};
    _walks.clear();
}

// The closing slash of the location makes the mode go to a directory, through a link too, or nowhere.
void Worker::makeModed(const Location& directory)
{
    const Node* parent = _world.disk.followed(directory.parent().textWithoutSlash());
    const bool inherits = parent != nullptr && (parent->mode & SET_GROUP_ID) != 0 &&
                          _world.mistake != Mistake::IgnoresSetGroupId;
    _world.disk.changeMode(directory.text(), inherits ? MODE_OF_NEW | SET_GROUP_ID : MODE_OF_NEW);
}

bool Worker::makeDirectories(const Location& directory)
{
    if (_world.exists(directory))
    {
        return true;
    }
    const Location parent = directory.parent();
    return (parent.text() == "/" || makeDirectories(parent)) &&
           _world.disk.makeDirectory(directory.textWithoutSlash(), MODE_OF_ANCESTORS) != Disk::Made::No;
}

} // namespace zolmodel
