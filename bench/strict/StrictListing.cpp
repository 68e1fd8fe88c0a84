#include "strict/StrictListing.h"

#include "strict/StrictNames.h"
#include "ways/DirectoryHandle.h"
#include "ways/DirectoryRead.h"

#include <algorithm>
#include <ctime>
#include <sys/stat.h>
#include <vector>

namespace zolbench
{

namespace
{

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

} // namespace

std::vector<ListedFile> strictFiles(const std::string& directory)
{
    const DirectoryHandle handle(directory);
    ::tzset(); // the zone once
    std::vector<ListedFile> files;
    readDirectory(handle.number(), [&](const char* name, unsigned char) {
        struct stat status
        {};
        require(::fstatat(handle.number(), name, &status, 0) == 0, name);
        if (S_ISREG(status.st_mode) && !isMarker(name))
        {
            files.push_back({name, static_cast<std::uint64_t>(status.st_size), std::string(extensionOf(name)),
                             timeText(status.st_ctime)});
        }
    });
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace zolbench
