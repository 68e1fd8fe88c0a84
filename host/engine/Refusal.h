#pragma once

#include <stdexcept>
#include <string>
#include <utility>

namespace zolhost
{

/// What was asked for is not done; `what()` says why, in words for an operator.
class Refusal : public std::runtime_error
{
public:
    enum class Kind
    {
        BadName,      ///< the name can't be one of an object, or of one that this can be asked of
        NoSuchObject, ///< there is no such object
        Failed        ///< the component or the host doesn't do it
    };

    Refusal(Kind kind, std::string dn, const std::string& why)
        : std::runtime_error(why)
        , _kind(kind)
        , _dn(std::move(dn))
    {}

    Kind kind() const { return _kind; }
    const std::string& dn() const { return _dn; } ///< empty if no object is concerned

private:
    Kind _kind;
    std::string _dn;
};

} // namespace zolhost
