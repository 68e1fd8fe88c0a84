#pragma once

#include "engine/Place.h"

#include <string_view>

/// What the model says about an object is looked at before a component is asked, because it takes its host at
/// its word. All of these throw Refusal.
namespace zolhost::vetting
{

void requireCreatable(const Place& place);
void requireDeletable(const Place& place);
void requireAction(const Place& place, std::string_view actionName);
void requireAttribute(const Place& place, std::string_view attributeName);
void requireChildClass(const Place& place, std::string_view className);

/// The component takes the name of the place for nothing else.
void requireReachable(const Place& place);
void requireReachableToDelete(const Place& place);

} // namespace zolhost::vetting
