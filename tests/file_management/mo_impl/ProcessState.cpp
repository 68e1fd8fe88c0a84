#include "ProcessState.h"

#include "support/ChildProcess.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <system_error>
#include <unistd.h>

namespace zoltest
{

namespace
{

constexpr uid_t nobody = 65534;

void setVariable(const std::string& name, const std::optional<std::string>& value)
{
    if (value)
    {
        ::setenv(name.c_str(), value->c_str(), 1);
    }
    else
    {
        ::unsetenv(name.c_str());
    }
}

void dropPrivileges()
{
    if (::geteuid() == 0 && (::setgid(nobody) != 0 || ::setuid(nobody) != 0))
    {
        throw std::system_error(errno, std::generic_category(), "setuid");
    }
}

} // namespace

Environment::Environment(const std::string& name, const std::optional<std::string>& value)
    : _name(name)
{
    if (const char* previous = std::getenv(name.c_str()))
    {
        _previous = previous;
    }
    setVariable(_name, value);
}

Environment::~Environment()
{
    setVariable(_name, _previous);
}

TimeZone::TimeZone(const std::string& zone)
{
    _variable.emplace("TZ", zone);
    ::tzset();
}

TimeZone::~TimeZone()
{
    _variable.reset();
    ::tzset();
}

WorkingDirectory::WorkingDirectory(const std::string& directory)
    : _previous(std::filesystem::current_path())
{
    std::filesystem::current_path(directory);
}

WorkingDirectory::~WorkingDirectory()
{
    std::error_code ignored;
    std::filesystem::current_path(_previous, ignored);
}

std::string asOrdinaryUser(const TemporaryTree& tree, const std::function<std::string()>& function)
{
    tree.chmod("", 0755);
    const ChildOutcome outcome = runInChild([&] {
        dropPrivileges();
        std::cerr << function();
        return 0;
    });
    return outcome.standardError;
}

} // namespace zoltest
