#include "ClassNames.h"
#include "FileMTransaction.h"
#include "FileManagementConstrainsUtil.h"
#include "LogForms.h"
#include "UnexpectedException.h"

#include <Poco/File.h>
#include <cstdint>
#include <zol/common/DnUtil.h>

namespace ZolFileManagement
{

using ZolFileManagementCommon::FileManagementConstrainsUtil;

namespace
{

// One sequence for all transactions and both kinds of iterator; guarded by the lock of FileMMoImpl.
std::uint64_t nextIteratorId = 0;

} // namespace

ZolReturnT FileMTransaction::newIterator(const char* parentDn, const char* className,
                                         unsigned long long* iteratorId) noexcept
{
    if (className == fileMConfigDataClassName)
    {
        *iteratorId = ++nextIteratorId;
        try
        {
            auto* iterator = _autoMemory.newObj<FileConfigIterator>();
            _fileConfigIterators.insert({*iteratorId, iterator});
        }
        catch (const std::exception& failure)
        {
            ZOL_TRACE_UNEXPECTED_EXCEPTION(failure);
            return -1;
        }
        return 0;
    }

    const Poco::Path path = convertDnToPath(parentDn);
    const bool iterateFiles = className == fileInformationClassName;
    if (!iterateFiles && className != fileGroupClassName)
    {
        ZOL_PLAIN_TRACE("Unexpected MO classname :%s", className);
        return -1;
    }

    *iteratorId = ++nextIteratorId;
    try
    {
        auto* iterator = _autoMemory.addObj(new FileGroupIterator(path, _nonComittedData, iterateFiles));
        _fileGroupIterators.insert({*iteratorId, iterator});
    }
    catch (const std::exception& failure)
    {
        ZOL_TRACE_UNEXPECTED_EXCEPTION(failure);
        return -1;
    }
    return 0;
}

ZolReturnT FileMTransaction::next(unsigned long long iteratorId, char** name) noexcept
{
    try
    {
        *name = nullptr;
        if (const auto group = _fileGroupIterators.find(iteratorId); group != _fileGroupIterators.end())
        {
            FileGroupIterator& iterator = *group->second;
            Poco::Path path;
            if (!iterator.getNext(path))
            {
                return 0;
            }
            std::string value = path.makeFile().getFileName();
            if (iterator._lastIsFile)
            {
                alignNameWithQuestionMark(value);
            }
            else
            {
                alignFileGroupWith3gppRdn(value);
            }
            *name = _autoMemory.strdup(value.c_str());
            return 0;
        }

        const auto config = _fileConfigIterators.find(iteratorId);
        if (config == _fileConfigIterators.end())
        {
            return -2;
        }
        std::string value;
        if (config->second->getNext(value))
        {
            *name = _autoMemory.strdup(value.c_str());
        }
        return 0;
    }
    catch (const std::exception& failure)
    {
        ZOL_TRACE_UNEXPECTED_EXCEPTION(failure);
        return -1;
    }
}

ZolReturnT FileMTransaction::countMoChildren(const char* dn, const char* className, unsigned long long* count)
{
    *count = 0;
    const Poco::Path path = convertDnToPath(dn);
    const bool iterateFiles = className == fileInformationClassName;
    if (!iterateFiles && className != fileGroupClassName)
    {
        return 0;
    }
    FileGroupIterator children(path, _nonComittedData, iterateFiles);
    Poco::Path child;
    while (children.getNext(child))
    {
        ++*count;
    }
    return 0;
}

bool FileMTransaction::isDirContainingFiles(const Poco::Path& directory)
{
    Poco::Path entry;
    FileGroupIterator files(directory, _nonComittedData, true);
    if (files.getNext(entry))
    {
        return true;
    }
    FileGroupIterator directories(directory, _nonComittedData, false);
    while (directories.getNext(entry))
    {
        if (isDirContainingFiles(entry))
        {
            return true;
        }
    }
    return false;
}

bool FileMTransaction::existsMo(const char* dn)
{
    if (!checkDn(dn))
    {
        return false;
    }
    const Poco::Path path = convertDnToPath(dn);
    const Poco::File file(path);
    const bool isGroup = Zol::DnUtil::getClass(dn) == fileGroupClassName;
    if (!FileManagementConstrainsUtil::isHidden(path) && file.exists() && file.isDirectory() == isGroup)
    {
        return true;
    }
    return isGroup && _nonComittedData.isDirCreated(path);
}

} // namespace ZolFileManagement
