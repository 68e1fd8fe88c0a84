#pragma once

#include <span>
#include <string_view>
#include <zol/spi/ZolMoAttributeValue_3.h>

namespace zolhost
{

struct MoAttribute
{
    std::string_view name;
    ZolOamSpiMoAttributeType_3 type;
    bool isList;
    std::string_view help;
    std::span<const MoAttribute> members; ///< of a struct
};

struct MoAction
{
    std::string_view name;
    std::string_view parameter; ///< what it is called; empty if there is none
    std::string_view help;
};

/// A class of managed objects. What isn't in the description isn't asked of a component.
struct MoClass
{
    std::string_view name;
    std::string_view keyAttribute;
    std::string_view onlyValue; ///< empty if there can be many objects
    bool canBeCreated;
    bool canBeDeleted;
    std::span<const std::string_view> children; ///< classes that can stand below it
    std::span<const MoAttribute> attributes;
    std::span<const MoAction> actions;
    std::string_view help;

    const MoAttribute* attribute(std::string_view attributeName) const; ///< null if there is none
    const MoAction* action(std::string_view actionName) const;          ///< null if there is none
    bool canHold(std::string_view className) const;
};

/// All classes, from the root of the tree downwards.
std::span<const MoClass> moClasses();

/// Null if there is no such class.
const MoClass* findMoClass(std::string_view name);

} // namespace zolhost
