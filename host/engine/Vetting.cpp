#include "engine/Vetting.h"

#include "engine/Refusal.h"

#include <boost/algorithm/string/replace.hpp>
#include <string>

namespace zolhost::vetting
{

namespace
{

constexpr std::string_view DIRECTORY = "FileGroup";
constexpr std::string_view FILE = "FileInformation";

/// All that a component tries for the substitute, but for the comma; and the substitute itself.
constexpr std::string_view CHARACTERS[] = {"\\n", "\\r", "=",  "+",  "<", ">",
                                           "#",   ";",   "\\", "\"", "*", DistinguishedName::SUBSTITUTE};

[[noreturn]] void refuse(Refusal::Kind kind, const DistinguishedName& dn, const std::string& why)
{
    throw Refusal(kind, dn.text(), why);
}

[[noreturn]] void refuseBadName(const DistinguishedName& dn, const std::string& why)
{
    refuse(Refusal::Kind::BadName, dn, why);
}

[[noreturn]] void refuseDirectory(const DistinguishedName& dn, const std::string& directory)
{
    refuse(Refusal::Kind::Failed, dn, "it is a directory, with the name " + directory);
}

std::string spelled(const DistinguishedName& dn, std::string_view character)
{
    return boost::algorithm::replace_all_copy(dn.text(), DistinguishedName::SUBSTITUTE, character);
}

bool isFile(const DistinguishedName& dn)
{
    return dn.moClass().name == FILE;
}

std::string nameOfClass(const DistinguishedName& dn)
{
    return std::string(dn.moClass().name);
}

} // namespace

bool exists(const ManagedObjects& objects, const DistinguishedName& dn)
{
    return !dn.moClass().onlyValue.empty() || objects.exists(dn.text());
}

void requireObject(const ManagedObjects& objects, const DistinguishedName& dn)
{
    if (exists(objects, dn))
    {
        return;
    }
    if (isFile(dn) && exists(objects, dn.as(DIRECTORY)))
    {
        refuseDirectory(dn, dn.as(DIRECTORY).text());
    }
    refuse(Refusal::Kind::NoSuchObject, dn, "no such object");
}

void requireFound(const ManagedObjects& objects, const DistinguishedName& dn)
{
    if (dn.text().find(DistinguishedName::SUBSTITUTE) == std::string::npos)
    {
        requireObject(objects, dn);
        return;
    }
    const DistinguishedName cut = dn.cutAtSubstitutes();
    for (const auto& other : {cut.as(DIRECTORY), cut.as(FILE)})
    {
        if (exists(objects, other))
        {
            refuse(Refusal::Kind::Failed, dn,
                   '"' + std::string(DistinguishedName::SUBSTITUTE) +
                       "\" may stand for a comma, which ends a value, and then " + other.text() +
                       " is meant");
        }
    }
    bool found = false;
    for (const auto character : CHARACTERS)
    {
        const std::string directory = spelled(dn.as(DIRECTORY), character);
        if (isFile(dn) && objects.exists(directory))
        {
            refuseDirectory(dn, directory);
        }
        found = found || objects.exists(spelled(dn, character));
    }
    if (!found)
    {
        refuse(Refusal::Kind::NoSuchObject, dn, "no such object");
    }
}

void requireCreatable(const DistinguishedName& dn)
{
    if (!dn.moClass().canBeCreated)
    {
        refuseBadName(dn, "a " + nameOfClass(dn) + " can't be created");
    }
}

void requireDeletable(const DistinguishedName& dn)
{
    if (dn.isRoot())
    {
        refuseBadName(dn, "the root of the tree can't be removed");
    }
    if (!dn.moClass().canBeDeleted)
    {
        refuseBadName(dn, "a " + nameOfClass(dn) + " can't be removed");
    }
}

void requireAction(const DistinguishedName& dn, std::string_view actionName)
{
    if (dn.moClass().action(actionName) == nullptr)
    {
        refuseBadName(dn, "a " + nameOfClass(dn) + " has no action " + std::string(actionName));
    }
}

void requireAttribute(const DistinguishedName& dn, std::string_view attributeName)
{
    if (dn.moClass().attribute(attributeName) == nullptr)
    {
        refuseBadName(dn, "a " + nameOfClass(dn) + " has no attribute " + std::string(attributeName));
    }
}

void requireChildClass(const DistinguishedName& dn, std::string_view className)
{
    if (!dn.moClass().canHold(className))
    {
        refuseBadName(dn, "there is no " + std::string(className) + " below a " + nameOfClass(dn));
    }
}

} // namespace zolhost::vetting
