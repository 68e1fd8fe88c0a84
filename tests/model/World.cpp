#include "model/World.h"

#include <utility>

namespace zolmodel
{

World::World(const std::string& sandbox, const std::string& rootDirectory, Surroundings told)
    : disk(sandbox)
    , root(rootDirectory)
    , changeable(sandbox)
    , surroundings(std::move(told))
{}

bool World::hasMarker(const Location& directory, const char* marker) const
{
    return disk.exists(directory.text() + "/" + marker);
}

// A removal that ends in a dot goes by rules that are the system's own and not the component's.
void World::requireChangeable(const Location& location) const
{
    const std::string text = location.textWithoutSlash();
    const bool endsInDots = location.fileName() == "." || location.fileName() == "..";
    if (!text.starts_with(changeable + "/") || endsInDots)
    {
        throw OutOfReach(text);
    }
}

} // namespace zolmodel
