#include "ConfigurationText.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <zol/common/ZolException.h>

namespace Zol
{

namespace
{

/// A document in memory takes fifty times its size, and what its entities stand for in attributes a hundred.
constexpr std::size_t MAX_SIZE = 256U << 10U;

[[noreturn]] void throwUnreadable(const std::string& path, int error)
{
    throw ZolException("Configuration document \"%s\" can't be read: %s", path.c_str(),
                       std::generic_category().message(error).c_str());
}

/// What isn't a file, such as a pipe, might never come to its end.
std::FILE* openFile(const std::string& path)
{
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    struct stat status = {};
    if (descriptor < 0)
    {
        throwUnreadable(path, errno);
    }
    if (::fstat(descriptor, &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode))
    {
        ::close(descriptor);
        throw ZolException("Configuration document \"%s\" can't be read: It is no file", path.c_str());
    }
    std::FILE* const file = ::fdopen(descriptor, "r");
    if (file == nullptr)
    {
        const int error = errno;
        ::close(descriptor);
        throwUnreadable(path, error);
    }
    return file;
}

std::string readFile(const std::string& path)
{
    const auto close = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> file(openFile(path));
    std::string text;
    std::array<char, 4096> block;
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), file.get()))
    {
        text.append(block.data(), size);
        if (text.size() > MAX_SIZE)
        {
            break;
        }
    }
    if (std::ferror(file.get()) != 0)
    {
        throwUnreadable(path, errno);
    }
    return text;
}

} // namespace

ConfigurationText readConfigurationText(const std::string& config)
{
    const std::size_t begin = config.find_first_not_of(" \t\r\n");
    const bool isText = begin != std::string::npos && config[begin] == '<';
    // nothing may stand before an XML declaration
    ConfigurationText result = isText ? ConfigurationText{config.substr(begin), "text"}
                                      : ConfigurationText{readFile(config), '"' + config + '"'};
    if (result.text.size() > MAX_SIZE)
    {
        throw ZolException("Configuration document %s is larger than %zu bytes", result.name.c_str(),
                           MAX_SIZE);
    }
    return result;
}

} // namespace Zol
