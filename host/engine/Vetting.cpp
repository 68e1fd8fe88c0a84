#include "engine/Vetting.h"

#include "engine/NameForms.h"
#include "engine/Refusal.h"

#include <string>

namespace zolhost::vetting
{

namespace
{

[[noreturn]] void refuse(const Place& place, const std::string& why)
{
    throw Refusal(Refusal::Kind::BadName, place.dn(), why);
}

/// The name is a good one, but more than it says would be done.
[[noreturn]] void refuseToTouch(const Place& place, const std::string& why)
{
    throw Refusal(Refusal::Kind::Failed, place.dn(), why);
}

std::string nameOfClass(const Place& place)
{
    return std::string(place.moClass().name);
}

} // namespace

void requireCreatable(const Place& place)
{
    if (!place.moClass().canBeCreated)
    {
        refuse(place, "a " + nameOfClass(place) + " can't be created");
    }
}

void requireDeletable(const Place& place)
{
    if (place.isRoot())
    {
        refuseToTouch(place, "the root of the tree can't be removed");
    }
    if (!place.moClass().canBeDeleted)
    {
        refuse(place, "a " + nameOfClass(place) + " can't be removed");
    }
    if (place.isFile() && place.parent().isRoot())
    {
        refuseToTouch(place,
                      "a file that lies directly in the root is no object: its name would stand for the root "
                      "with all that is in it");
    }
}

void requireAction(const Place& place, std::string_view actionName)
{
    if (place.moClass().action(actionName) == nullptr)
    {
        refuse(place, "a " + nameOfClass(place) + " has no action " + std::string(actionName));
    }
}

void requireAttribute(const Place& place, std::string_view attributeName)
{
    if (place.moClass().attribute(attributeName) == nullptr)
    {
        refuse(place, "a " + nameOfClass(place) + " has no attribute " + std::string(attributeName));
    }
}

void requireChildClass(const Place& place, std::string_view className)
{
    if (!place.moClass().canHold(className))
    {
        refuse(place, "there is no " + std::string(className) + " below a " + nameOfClass(place));
    }
}

void requireReachable(const Place& place)
{
    if (!place.isReachable())
    {
        refuseToTouch(place,
                      R"(no name reaches it: a comma in a name ends the value, and "\2B" stands for a plus)");
    }
}

void requireReachableToDelete(const Place& place)
{
    requireReachable(place);
    if (!place.isReachableToDelete())
    {
        const std::string path = pathToDelete(place.dn(), place.rootDirectory());
        refuseToTouch(place, R"("?)"
                             R"(?" in its name stands for another character first, and )" +
                                 (path.empty() ? "/" : path) + " would be removed");
    }
}

} // namespace zolhost::vetting
