#include "ProcessState.h"

#include "support/ChildProcess.h"
#include "support/OrdinaryUser.h"

#include <cstdlib>
#include <ctime>
#include <iostream>

namespace zoltest
{

namespace
{

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

std::string asOrdinaryUser(const TemporaryTree& tree, const std::function<std::string()>& function)
{
    tree.chmod("", 0755);
    const ChildOutcome outcome = runInChild([&] {
        becomeOrdinaryUser();
        std::cerr << function();
        return 0;
    });
    return outcome.standardError;
}

} // namespace zoltest
