#include "FileManagementZoleaWrapper.h"

#include "LogForms.h"

#include <Poco/ScopedLock.h>
#include <Poco/String.h>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <zol/common/ZolException.h>

namespace ZolFileManagementCommon
{

namespace
{

[[noreturn]] void failToInvoke(const std::string& commandLine, int error)
{
    ZOL_PLAIN_TRACE("Failed to invoke zolea : execution of '%s' failed - error=%s", commandLine.c_str(),
                    error != 0 ? std::strerror(error) : "'Abnormal termination'");
    // the word is doubled: operators search their logs for this wording
    throw Zol::ZolException("Failed to invoke: zolea %s, error=%s", commandLine.c_str(),
                            std::strerror(error));
}

} // namespace

FileManagementZoleaWrapper::FileManagementZoleaWrapper() = default;

FileManagementZoleaWrapper::~FileManagementZoleaWrapper() = default;

std::string FileManagementZoleaWrapper::invokeZolea(const std::string& arguments) const
{
    ZOL_ENTER_TRACE(" >> Invoking: zolea %s", arguments.c_str());
    const Poco::ScopedLock<Poco::Mutex> lock(_mutex);
    const std::string commandLine = "zolea " + arguments;

    errno = 0;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(::popen(commandLine.c_str(), "r"), ::pclose);
    if (output == nullptr)
    {
        failToInvoke(commandLine, errno);
    }
    ZOL_PLAIN_TRACE("Executing '%s'", commandLine.c_str());

    std::string result;
    std::array<char, 1024> buffer{};
    while (std::fgets(buffer.data(), static_cast<int>(buffer.size()), output.get()) != nullptr)
    {
        result += buffer.data();
    }

    errno = 0;
    if (::pclose(output.release()) == -1)
    {
        failToInvoke(commandLine, errno);
    }
    ZOL_PLAIN_TRACE("Executed '%s'", commandLine.c_str());

    Poco::trimInPlace(result);
    ZOL_EXIT_TRACE(" << ");
    return result;
}

bool FileManagementZoleaWrapper::readConfiguration(std::string& internalRoot)
{
    ZOL_ENTER_TRACE(" >> ");
    internalRoot = invokeZolea("file-system internalRoot");
    const auto last = internalRoot.find_last_not_of(" \t\n");
    if (last != std::string::npos)
    {
        internalRoot.erase(last + 1);
    }
    ZOL_EXIT_TRACE(" << ");
    return true;
}

std::string FileManagementZoleaWrapper::serialize(const std::vector<std::string>& arguments) const
{
    std::string text;
    for (const auto& argument : arguments)
    {
        if (&argument != &arguments.front())
        {
            text += ' ';
        }
        text += argument;
    }
    return text;
}

} // namespace ZolFileManagementCommon
