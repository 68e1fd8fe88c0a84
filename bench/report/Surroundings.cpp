#include "report/Surroundings.h"

#include "ways/Require.h"

#include <cstdlib>
#include <sys/utsname.h>
#include <thread>

namespace zolbench
{

double loadAverage()
{
    double load = 0;
    require(::getloadavg(&load, 1) == 1, "getloadavg");
    return load;
}

std::string machine()
{
    utsname names{};
    require(::uname(&names) == 0, "uname");
    return std::string(names.sysname) + ' ' + names.release + ", " +
           std::to_string(std::thread::hardware_concurrency()) + " processors";
}

} // namespace zolbench
