#pragma once

#include "engine/ManagedObjects.h"
#include "engine/Place.h"
#include "staging/Plan.h"

#include <functional>
#include <string>

namespace zolhost
{

/// What a component lists below a place, each child with what stands for it on disk.
struct Child
{
    Place place;
    std::string value; ///< as the component lists it
    bool isLink = false;
    bool isNew = false;   ///< is made by the transaction
    bool isOnDisk = true; ///< the name on disk was found; if not, it is taken from the value
};

/// Visits the directories and then the files, which in the root are no objects, each in the component's
/// order, until the function returns false. The memory of the host doesn't grow with their number. Throws
/// Refusal.
void eachChild(const ManagedObjects& objects, const Plan& plan, const Place& place,
               const std::function<bool(const Child& child)>& visit);

/// The same for one class.
void eachDirectory(const ManagedObjects& objects, const Plan& plan, const Place& place,
                   const std::function<bool(const Child& child)>& visit);
void eachFile(const ManagedObjects& objects, const Plan& plan, const Place& place,
              const std::function<bool(const Child& child)>& visit);

} // namespace zolhost
