#pragma once

#include "engine/Component.h"
#include "engine/Portal.h"

#include <filesystem>
#include <string>

namespace zolbench
{

/// The component as a host loads it, with no more of a host around it than it asks for.
class Library
{
public:
    Library(const std::filesystem::path& file, const std::string& root);

    /// Where it stands beside this program.
    static std::filesystem::path defaultFile();

    const ZolOamSpiTransactionalResource_1& resource() const { return _component.resource(); }
    const ZolOamSpiManagedObject_3& objects() const { return _component.objects(); }

private:
    zolhost::Portal _portal;
    zolhost::Component _component;
};

} // namespace zolbench
