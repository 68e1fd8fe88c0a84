#include "engine/Vetting.h"

#include "engine/Refusal.h"

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <string>
#include <variant>
#include <vector>

namespace zolhost::vetting
{

namespace
{

constexpr std::string_view DIRECTORY = "FileGroup";
constexpr std::string_view FILE = "FileInformation";

/// All that a component tries for the substitute, but for the comma.
constexpr std::string_view CHARACTERS[] = {"\\n", "\\r", "=", "+", "<", ">", "#", ";", "\\", "\"", "*"};

[[noreturn]] void refuse(Refusal::Kind kind, const DistinguishedName& dn, const std::string& why)
{
    throw Refusal(kind, dn.text(), why);
}

[[noreturn]] void refuseBadName(const DistinguishedName& dn, const std::string& why)
{
    refuse(Refusal::Kind::BadName, dn, why);
}

bool isFile(const DistinguishedName& dn)
{
    return dn.moClass().name == FILE;
}

bool hasSubstitute(const DistinguishedName& dn)
{
    return dn.text().find(DistinguishedName::SUBSTITUTE) != std::string::npos;
}

/// What a name with substitutes may stand for beside itself.
std::vector<std::string> spellings(const DistinguishedName& dn)
{
    std::vector<std::string> texts;
    for (const auto character : CHARACTERS)
    {
        texts.push_back(
            boost::algorithm::replace_all_copy(dn.text(), DistinguishedName::SUBSTITUTE, character));
    }
    return texts;
}

bool isListed(const ManagedObjects& objects, const DistinguishedName& dn)
{
    const auto names = objects.children(dn.parent().text(), std::string(dn.moClass().name));
    return std::ranges::find(names, dn.value()) != names.end();
}

/// Whether there is anything at all, be it a file or a directory, under the name of a file without
/// substitutes.
bool isTaken(const ManagedObjects& objects, const std::string& fileDn)
{
    try
    {
        const auto time = objects.attribute(fileDn, "modificationTime");
        return !std::get<std::string>(time.values.at(0)).empty();
    }
    catch (const Refusal&)
    {
        return false;
    }
}

/// With a comma in the place of a substitute, the rest of the value doesn't count.
void requireNothingAtComma(const ManagedObjects& objects, const DistinguishedName& dn)
{
    const DistinguishedName cut = dn.cutAtSubstitutes();
    const bool canBeFile = !cut.parent().isRoot();
    if (objects.exists(cut.as(DIRECTORY).text()) || (canBeFile && isTaken(objects, cut.as(FILE).text())))
    {
        refuse(Refusal::Kind::Failed, dn,
               '"' + std::string(DistinguishedName::SUBSTITUTE) +
                   "\" may stand for a comma, which ends a value, and then " + cut.text() + " is meant");
    }
}

void requireNoDirectory(const ManagedObjects& objects, const DistinguishedName& fileName)
{
    bool isDirectory = objects.exists(fileName.as(DIRECTORY).text());
    for (const auto& text : spellings(fileName))
    {
        // not asked as a directory, whose name would be decoded
        isDirectory = isDirectory || (isTaken(objects, text) && !objects.exists(text));
    }
    if (isDirectory)
    {
        refuse(Refusal::Kind::Failed, fileName, "it may be a directory");
    }
}

void requireNoFile(const ManagedObjects& objects, const DistinguishedName& directoryName)
{
    const auto names = spellings(directoryName.as(FILE));
    const bool canBeFile = !directoryName.parent().isRoot();
    if (canBeFile && std::ranges::any_of(names, [&](const auto& text) { return objects.exists(text); }))
    {
        refuse(Refusal::Kind::Failed, directoryName, "it may be a file");
    }
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
    if (!hasSubstitute(dn))
    {
        // the component denies a few names that it lists, such as "..."
        if (isListed(objects, dn))
        {
            return;
        }
        if (isFile(dn) && isTaken(objects, dn.text()))
        {
            refuse(Refusal::Kind::Failed, dn, "it is a directory");
        }
    }
    refuse(Refusal::Kind::NoSuchObject, dn, "no such object");
}

void requireFound(const ManagedObjects& objects, const DistinguishedName& dn)
{
    if (!hasSubstitute(dn))
    {
        requireObject(objects, dn);
        return;
    }
    requireNothingAtComma(objects, dn);
    if (isFile(dn))
    {
        requireNoDirectory(objects, dn);
    }
    else
    {
        requireNoFile(objects, dn);
    }
    const auto names = spellings(dn);
    const bool isThere = objects.exists(dn.text()) || isListed(objects, dn) ||
                         std::ranges::any_of(names, [&](const auto& text) { return objects.exists(text); });
    if (!isThere)
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
