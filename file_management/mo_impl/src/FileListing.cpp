#include "DirectoryEntries.h"
#include "FileMTransaction.h"
#include "FileManagementConstrainsUtil.h"
#include "TextCopy.h"

#include <Poco/File.h>
#include <algorithm>
#include <array>
#include <cstdio>
#include <ctime>
#include <sys/stat.h>

namespace ZolFileManagement
{

using ZolFileManagementCommon::FileManagementConstrainsUtil;

namespace
{

// The released result frees each of these by itself, so that nothing is shared. It finds a member from the
// start, also one that lack of memory leaves incomplete.
QenMoAttributeValue_3& addMember(QenMoAttributeStructMember*& list, const char* name,
                                 QenOamSpiMoAttributeType_3 type)
{
    list = new QenMoAttributeStructMember{nullptr, nullptr, list};
    list->memberName = Zol::copyText(name).release();
    list->memberValue = new QenMoAttributeValueContainer_3{type, 1, nullptr};
    list->memberValue->values = new QenMoAttributeValue_3[1]{};
    return list->memberValue->values[0];
}

void addTextMember(QenMoAttributeStructMember*& list, const char* name, const std::string& text)
{
    QenMoAttributeValue_3& value = addMember(list, name, attrTypeString);
    value.stringValue = Zol::copyText(text.c_str()).release();
}

// Of the last status change, so that a change of permissions or owner moves it too.
std::string timeText(const std::tm* time)
{
    if (time == nullptr)
    {
        return {};
    }
    std::array<char, 80> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d", time->tm_year + 1900,
                  time->tm_mon + 1, time->tm_mday, time->tm_hour, time->tm_min, time->tm_sec);
    return text.data();
}

} // namespace

void FileMTransaction::getFileGroupFiles(const char* dn, std::vector<FileInfo>& files)
{
    const Poco::Path path = convertDnToPath(dn);
    if (_nonComittedData.isDirCreated(path))
    {
        return;
    }

    DirectoryEntries entries;
    if (!entries.open(Poco::File(path).path()))
    {
        Poco::File::handleLastError(path.toString());
    }
    ::tzset(); // localtime_r leaves the zone as it is
    Poco::Path file = Poco::Path(path).makeDirectory();
    const std::string directory = file.toString();
    for (; !entries.isAtEnd(); entries.advance())
    {
        const std::string text = directory + entries.name();
        struct stat status
        {};
        if (::stat(text.c_str(), &status) != 0)
        {
            Poco::File::handleLastError(text);
        }
        file.setFileName(entries.name());
        if (!S_ISREG(status.st_mode) || _nonComittedData._deletedFiles.containsText(text) ||
            _nonComittedData._deletedDirs.containsText(text) || FileManagementConstrainsUtil::isHidden(file))
        {
            continue;
        }
        std::tm parts{};
        files.push_back({.fileName = file.getFileName(),
                         .size = static_cast<std::uint64_t>(status.st_size),
                         .fileType = file.getExtension(),
                         .modificationTime = timeText(::localtime_r(&status.st_ctime, &parts))});
    }
    std::sort(files.begin(), files.end());
    files.shrink_to_fit(); // before the records are made, which take several times as much
}

void FileMTransaction::setAttrFilesResult(const char*, std::vector<FileInfo> files,
                                          QenMoAttributeValueResult_3& result)
{
    for (std::size_t i = 0; i < files.size(); ++i)
    {
        const FileInfo file = std::move(files[i]); // which frees its texts again
        // linked from the tail: the order of the members is the host's
        QenMoAttributeStructMember*& list = result.container->values[i].structValue;
        list = nullptr;
        addMember(list, "size", attrTypeUint).uintValue = file.size;
        addTextMember(list, "fileType", file.fileType);
        addTextMember(list, "modificationTime", file.modificationTime);
        addTextMember(list, "fileName", file.fileName);
    }
}

std::string FileMTransaction::getDate(const Poco::Path& path)
{
    struct stat status
    {};
    if (::stat(path.toString().c_str(), &status) != 0)
    {
        return {};
    }
    return timeText(std::localtime(&status.st_ctime));
}

} // namespace ZolFileManagement
