#include "ClassNames.h"
#include "FileMTransaction.h"
#include "FileManagementConstrainsUtil.h"
#include "FileStatus.h"
#include "LogForms.h"
#include "UnexpectedException.h"

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
            std::string value;
            if (!iterator.getNext(value))
            {
                return 0;
            }
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
    FileGroupIterator children(path, _nonComittedData, iterateFiles, FileGroupIterator::Span::OneCall);
    std::string child;
    while (children.getNext(child))
    {
        ++*count;
    }
    return 0;
}

bool FileMTransaction::isDirContainingFiles(const Poco::Path& directory)
{
    return isDirContainingFiles(Poco::Path(directory).makeDirectory().toString());
}

bool FileMTransaction::isDirContainingFiles(const std::string& directory)
{
    std::string name;
    FileGroupIterator files(directory, _nonComittedData, true, FileGroupIterator::Span::OneCall);
    if (files.getNext(name))
    {
        return true;
    }
    if (!files.hasMoreThanFiles() && _nonComittedData._createdDirs.empty())
    {
        return false;
    }
    FileGroupIterator directories(directory, _nonComittedData, false, FileGroupIterator::Span::OneCall);
    std::string subdirectory = directory;
    while (directories.getNext(name))
    {
        subdirectory.replace(directory.size(), std::string::npos, name);
        subdirectory += '/';
        if (isDirContainingFiles(subdirectory))
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
    const std::string text = dn; // once for both
    const std::string path = convertDnToText(text);
    const bool isGroup = Zol::DnUtil::getClass(text) == fileGroupClassName;
    if (!FileManagementConstrainsUtil::isHiddenName(std::string_view(path).substr(path.rfind('/') + 1)))
    {
        const FileStatus status(path);
        if (status.exists() && status.isDirectory() == isGroup)
        {
            return true;
        }
    }
    return isGroup && _nonComittedData._createdDirs.containsText(path);
}

} // namespace ZolFileManagement
