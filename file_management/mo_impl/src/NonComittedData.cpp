#include "NonComittedData.h"

namespace ZolFileManagement
{

namespace
{

void withdrawOrAdd(const std::string& text, NonComittedData::Paths& opposite,
                   NonComittedData::Paths& intended)
{
    if (opposite.eraseText(text) == 0)
    {
        intended.insertText(text);
    }
}

} // namespace

void NonComittedData::addCreatedDirText(const std::string& text)
{
    withdrawOrAdd(text, _deletedDirs, _createdDirs);
}

void NonComittedData::addDeletedDir(const Poco::Path& path)
{
    withdrawOrAdd(path.toString(), _createdDirs, _deletedDirs);
}

void NonComittedData::addDeletedFileText(const std::string& text)
{
    _deletedFiles.insertText(text);
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
