#pragma once

#include "engine/MoModel.h"

#include <string>
#include <string_view>
#include <vector>

namespace zolhost
{

/// A name that an object of the model can have, and that leads to nothing outside of the tree whatever a
/// component makes of it.
class DistinguishedName
{
public:
    static constexpr std::string_view ROOT = "ManagedElement=1,SystemFunctions=1,FileM=1";

    /// The name of the root.
    DistinguishedName();

    /// Takes a whole name, or one from the root downwards such as "FileGroup=logs". Throws Refusal.
    static DistinguishedName parse(std::string_view text);

    std::string text() const;
    const MoClass& moClass() const;
    std::string value() const; ///< of the last part
    bool isRoot() const { return _parts.empty(); }

    struct Part
    {
        const MoClass* moClass;
        std::string value;
        bool operator==(const Part&) const = default;
    };
    const std::vector<Part>& parts() const { return _parts; } ///< below the root

private:
    /// Takes "Class=value". `whole` is the text that it comes from, for a refusal.
    void append(std::string_view part, std::string_view whole);

    std::vector<Part> _parts;
};

} // namespace zolhost
