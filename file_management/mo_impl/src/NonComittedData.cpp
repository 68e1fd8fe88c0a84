#include "NonComittedData.h"

namespace ZolFileManagement
{

namespace
{

void withdrawOrAdd(const Poco::Path& path, NonComittedData::Paths& opposite, NonComittedData::Paths& intended)
{
    if (opposite.erase(path) == 0)
    {
        intended.insert(path);
    }
}

} // namespace

void NonComittedData::addCreatedDir(const Poco::Path& path)
{
    withdrawOrAdd(path, _deletedDirs, _createdDirs);
}

void NonComittedData::addDeletedDir(const Poco::Path& path)
{
    withdrawOrAdd(path, _createdDirs, _deletedDirs);
}

void NonComittedData::addDeletedFile(const Poco::Path& path)
{
    _deletedFiles.insert(path);
}

bool NonComittedData::isDirCreated(const Poco::Path& path) const
{
    return _createdDirs.contains(path);
}

void NonComittedData::reset()
{
    _createdDirs.clear();
    _deletedDirs.clear();
    _deletedFiles.clear();
}

} // namespace ZolFileManagement
