#pragma once

#include "engine/Place.h"
#include "staging/Plan.h"

#include <string>
#include <vector>

namespace zolhost
{

/// One change that is asked of a component.
struct Request
{
    enum class Kind
    {
        MakeDirectory,   ///< creating a FileGroup
        RemoveDirectory, ///< deleting a FileGroup
        RemoveFile,      ///< deleting a FileInformation
        RemoveTree,      ///< the action `remove`
        RemoveMatching   ///< the action `removeFile`
    };
    Kind kind;
    Place place;
    std::string expression = {}; ///< of RemoveMatching
};

/// What the host refuses before the component is asked, which would do more or something else than what the
/// name says. Throws Refusal.
struct Safeguards
{
    bool throughLinks = false; ///< lets a place be changed that symbolic links lead to
    bool rootTree = false;     ///< lets the tree of the root be removed
};
void vet(const Request& request, const Plan& plan, const Safeguards& safeguards);

/// Why the component refuses it, found by looking; empty if nothing speaks against it. The words are the
/// component's own where it has some.
std::string reasonAgainst(const Request& request, const Plan& plan);

/// The files of a directory that the action `removeFile` takes, by their names on disk in byte order, and how
/// many visible files there are.
struct Matches
{
    std::vector<std::string> names;
    std::size_t visible = 0;
};
Matches matchesOf(const Place& directory, const std::string& expression, const Plan& plan);

} // namespace zolhost
