#include "model/Changes.h"

namespace zolmodel
{

void Changes::create(const Location& directory)
{
    if (deletedDirectories.erase(directory) == 0)
    {
        createdDirectories.insert(directory);
    }
}

void Changes::remove(const Location& directory)
{
    if (createdDirectories.erase(directory) == 0)
    {
        deletedDirectories.insert(directory);
    }
}

bool Changes::isDeleted(const Location& location) const
{
    return deletedFiles.contains(location) || deletedDirectories.contains(location);
}

} // namespace zolmodel
