#pragma once

#include "engine/DistinguishedName.h"
#include "engine/ManagedObjects.h"

#include <string_view>

/// What is looked at before a component is asked, because it takes its host at its word. All of these throw
/// Refusal.
namespace zolhost::vetting
{

/// The tree's fixed objects are always there; of the others the component knows.
bool exists(const ManagedObjects& objects, const DistinguishedName& dn);

/// The object is there under exactly this name, and is no directory if the name is that of a file.
void requireObject(const ManagedObjects& objects, const DistinguishedName& dn);

/// As requireObject, for what a component finds by trying characters for the substitute: the object is there
/// under a name that may be tried, and none that may be tried is that of something else.
void requireFound(const ManagedObjects& objects, const DistinguishedName& dn);

/// The class offers this in the model.
void requireCreatable(const DistinguishedName& dn);
void requireDeletable(const DistinguishedName& dn);
void requireAction(const DistinguishedName& dn, std::string_view actionName);
void requireAttribute(const DistinguishedName& dn, std::string_view attributeName);
void requireChildClass(const DistinguishedName& dn, std::string_view className);

} // namespace zolhost::vetting
