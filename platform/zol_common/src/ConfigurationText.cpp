#include "ConfigurationText.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>
#include <zol/common/ZolException.h>

namespace Zol
{

namespace
{

[[noreturn]] void throwUnreadable(const std::string& path, int error)
{
    throw ZolException("Configuration document \"%s\" can't be read: %s", path.c_str(),
                       std::generic_category().message(error).c_str());
}

std::string readFile(const std::string& path)
{
    const auto close = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> file(std::fopen(path.c_str(), "re"));
    if (file == nullptr)
    {
        throwUnreadable(path, errno);
    }
    std::string text;
    std::array<char, 4096> block;
    while (const std::size_t size = std::fread(block.data(), 1, block.size(), file.get()))
    {
        text.append(block.data(), size);
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
    if (begin != std::string::npos && config[begin] == '<')
    {
        // nothing may stand before an XML declaration
        return {config.substr(begin), "text"};
    }
    return {readFile(config), '"' + config + '"'};
}

} // namespace Zol
