#pragma once

#include "support/TemporaryTree.h"

#include <functional>
#include <optional>
#include <string>

namespace zoltest
{

/// An environment variable has another value, or none, until the end of this object.
class Environment
{
public:
    Environment(const std::string& name, const std::optional<std::string>& value);
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment();

private:
    std::string _name;
    std::optional<std::string> _previous;
};

/// The process lives in another time zone until the end of this object. The sign in the text of a zone is
/// that of POSIX: "<+02>-2" is two hours before Greenwich.
class TimeZone
{
public:
    explicit TimeZone(const std::string& zone);
    TimeZone(const TimeZone&) = delete;
    TimeZone& operator=(const TimeZone&) = delete;
    ~TimeZone();

private:
    std::optional<Environment> _variable;
};

/// What the function returns in a child process that permission bits bind. Everyone may enter the tree then.
std::string asOrdinaryUser(const TemporaryTree& tree, const std::function<std::string()>& function);

} // namespace zoltest
