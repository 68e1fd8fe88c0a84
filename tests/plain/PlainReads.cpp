#include "plain/PlainReads.h"

#include "FileManagementConstrainsUtil.h"
#include "LogForms.h"

#include <Poco/File.h>
#include <algorithm>
#include <array>
#include <boost/algorithm/string/replace.hpp>
#include <cstdio>
#include <ctime>
#include <regex.h>
#include <sys/stat.h>
#include <zol/common/RegularExpression.h>

namespace zoltest
{

using ZolFileManagement::FileInfo;
using ZolFileManagementCommon::FileManagementConstrainsUtil;

std::uint64_t plainCount(const Poco::Path& directory, const PlainChanges& changes, bool countFiles)
{
    PlainWalk children(directory, changes, countFiles);
    std::uint64_t count = 0;
    Poco::Path child;
    while (children.getNext(child))
    {
        ++count;
    }
    return count;
}

bool plainContainsFiles(const Poco::Path& directory, const PlainChanges& changes)
{
    Poco::Path entry;
    PlainWalk files(directory, changes, true);
    if (files.getNext(entry))
    {
        return true;
    }
    PlainWalk directories(directory, changes, false);
    while (directories.getNext(entry))
    {
        if (plainContainsFiles(entry, changes))
        {
            return true;
        }
    }
    return false;
}

bool plainRemoveFiles(const Poco::Path& directory, const std::string& expression, PlainChanges& changes)
{
    ZOL_ENTER_TRACE(" >> Removing files matching expression %s", expression.c_str());
    const Zol::RegularExpression pattern(expression, REG_EXTENDED | REG_NOSUB);
    PlainWalk files(directory, changes, true);
    bool removed = false;
    Poco::Path file;
    while (files.getNext(file))
    {
        if (pattern.match(file.getFileName(), 0) && !isPlainLink(file))
        {
            changes.deletedFiles.insert(file);
            removed = true;
        }
    }
    ZOL_EXIT_TRACE(" << ");
    return removed;
}

std::vector<FileInfo> plainFiles(const Poco::Path& directory, const PlainChanges& changes)
{
    std::vector<FileInfo> files;
    if (changes.createdDirs.contains(directory))
    {
        return files;
    }
    const Poco::DirectoryIterator end;
    for (Poco::DirectoryIterator entry(directory); entry != end; ++entry)
    {
        const Poco::Path& file = entry.path();
        if (!entry->isFile() || changes.deletedFiles.contains(file) || changes.deletedDirs.contains(file) ||
            FileManagementConstrainsUtil::isHidden(file))
        {
            continue;
        }
        files.push_back({.fileName = file.getFileName(),
                         .size = entry->getSize(),
                         .fileType = file.getExtension(),
                         .modificationTime = plainDate(file)});
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string plainDate(const Poco::Path& path)
{
    struct stat status
    {};
    if (::stat(path.toString().c_str(), &status) != 0)
    {
        return {};
    }
    const std::tm* time = std::localtime(&status.st_ctime);
    if (time == nullptr)
    {
        return {};
    }
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", time->tm_year + 1900,
                  time->tm_mon + 1, time->tm_mday, time->tm_hour, time->tm_min, time->tm_sec);
    return text.data();
}

bool plainExists(const Poco::Path& path, bool isGroup, const PlainChanges& changes)
{
    const Poco::File file(path);
    if (!FileManagementConstrainsUtil::isHidden(path) && file.exists() && file.isDirectory() == isGroup)
    {
        return true;
    }
    return isGroup && changes.createdDirs.contains(path);
}

std::uint64_t plainSize(const Poco::Path& path)
{
    const Poco::File file(path);
    return file.exists() ? file.getSize() : 0;
}

bool plainNameSearch(std::string& dn, const std::function<Poco::Path(const std::string&)>& pathOf)
{
    for (const char* candidate : {"\\n", "\\r", ",", "=", "+", "<", ">", "#", ";", "\\", "\"", "*"})
    {
        const std::string candidateDn = boost::algorithm::replace_all_copy(dn, "??", candidate);
        if (Poco::File(pathOf(candidateDn)).exists())
        {
            dn = candidateDn;
            return true;
        }
    }
    return false;
}

} // namespace zoltest
