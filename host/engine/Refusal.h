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

    Refusal(Kind kind, std::string dn, const std::string& why, bool isSilent = false)
        : std::runtime_error(why)
        , _kind(kind)
        , _dn(std::move(dn))
        , _isSilent(isSilent)
    {}

    Kind kind() const { return _kind; }
    const std::string& dn() const { return _dn; } ///< empty if no object is concerned
    /// The component gave a code and no word, so that `what()` is no more than the meaning of the code.
    bool isSilent() const { return _isSilent; }

private:
    Kind _kind;
    std::string _dn;
    bool _isSilent;
};

} // namespace zolhost
