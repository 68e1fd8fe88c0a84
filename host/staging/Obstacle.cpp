#include "staging/Obstacle.h"

#include "staging/DiskEntry.h"
#include "staging/SimulatedDisk.h"

namespace zolhost
{

std::string obstacleToRemoving(const std::string& path)
{
    const Progress none;
    return SimulatedDisk(none).remove(withoutSlash(path)).why;
}

std::string obstacleToMaking(const std::string& path)
{
    const Progress none;
    return SimulatedDisk(none).make(withoutSlash(path)).why;
}

} // namespace zolhost
