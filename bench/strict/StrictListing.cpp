#include "strict/StrictListing.h"

#include "strict/StrictNames.h"
#include "ways/DirectoryHandle.h"
#include "ways/DirectoryRead.h"

#include <algorithm>
#include <cstring>
#include <ctime>
#include <sys/stat.h>
#include <vector>

namespace zolbench
{

namespace
{

struct File
{
    std::string name;
    std::uint64_t size;
    std::time_t time;
};

void append(std::string& text, int number, int digits)
{
    std::string part = std::to_string(number);
    text.append(static_cast<std::size_t>(std::max(0, digits - static_cast<int>(part.size()))), '0');
    text += part;
}

std::string timeText(std::time_t time)
{
    std::tm parts{};
    ::localtime_r(&time, &parts);
    std::string text;
    append(text, parts.tm_year + 1900, 4);
    append(text += '-', parts.tm_mon + 1, 2);
    append(text += '-', parts.tm_mday, 2);
    append(text += 'T', parts.tm_hour, 2);
    append(text += ':', parts.tm_min, 2);
    append(text += ':', parts.tm_sec, 2);
    return text;
}

std::string_view extensionOf(std::string_view name)
{
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : name.substr(dot + 1);
}

ZolMoAttributeValueContainer_3* newContainer(ZolOamSpiMoAttributeType_3 type, std::size_t count)
{
    return new ZolMoAttributeValueContainer_3{type, static_cast<std::uint32_t>(count),
                                              count == 0 ? nullptr : new ZolMoAttributeValue_3[count]};
}

ZolMoAttributeStructMember* newMember(const char* name, ZolOamSpiMoAttributeType_3 type,
                                      ZolMoAttributeStructMember* next)
{
    return new ZolMoAttributeStructMember{::strdup(name), newContainer(type, 1), next};
}

ZolMoAttributeStructMember* newTextMember(const char* name, std::string_view text,
                                          ZolMoAttributeStructMember* next)
{
    auto* const member = newMember(name, attrTypeString, next);
    member->memberValue->values[0].stringValue = ::strndup(text.data(), text.size());
    return member;
}

ZolMoAttributeStructMember* newRecord(const File& file)
{
    auto* const size = newMember("size", attrTypeUint, nullptr);
    size->memberValue->values[0].uintValue = file.size;
    auto* const type = newTextMember("fileType", extensionOf(file.name), size);
    auto* const time = newTextMember("modificationTime", timeText(file.time), type);
    return newTextMember("fileName", file.name, time);
}

void release(ZolMoAttributeValueContainer_3* container);

void releaseRecord(ZolMoAttributeStructMember* member)
{
    while (member != nullptr)
    {
        auto* const next = member->nextMember;
        ::free(member->memberName);
        release(member->memberValue);
        delete member;
        member = next;
    }
}

void release(ZolMoAttributeValueContainer_3* container)
{
    for (std::uint32_t i = 0; i < container->nrOfValues; ++i)
    {
        if (container->valueType == attrTypeStruct)
        {
            releaseRecord(container->values[i].structValue);
        }
        else if (container->valueType == attrTypeString)
        {
            ::free(container->values[i].stringValue);
        }
    }
    delete[] container->values;
    delete container;
}

std::vector<File> readFiles(const std::string& path)
{
    const DirectoryHandle directory(path);
    std::vector<File> files;
    readDirectory(directory.number(), [&](const char* name, unsigned char) {
        struct stat status
        {};
        require(::fstatat(directory.number(), name, &status, 0) == 0, name);
        if (S_ISREG(status.st_mode) && !isMarker(name))
        {
            files.push_back({name, static_cast<std::uint64_t>(status.st_size), status.st_ctime});
        }
    });
    std::sort(files.begin(), files.end(),
              [](const File& left, const File& right) { return left.name < right.name; });
    return files;
}

} // namespace

ZolMoAttributeValueResult_3 strictListing(const std::string& directory)
{
    const std::vector<File> files = readFiles(directory);
    ::tzset();
    auto* const container = newContainer(attrTypeStruct, files.size());
    std::transform(files.begin(), files.end(), container->values, [](const File& file) {
        ZolMoAttributeValue_3 value{};
        value.structValue = newRecord(file);
        return value;
    });
    return {release, container};
}

ZolMoAttributeValueResult_3 strictNumber(std::int64_t number)
{
    auto* const container = newContainer(attrTypeInt, 1);
    container->values[0].intValue = number;
    return {release, container};
}

} // namespace zolbench
