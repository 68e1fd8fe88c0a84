#include "model/Unprivileged.h"

#include <cerrno>
#include <grp.h>
#include <sys/prctl.h>
#include <system_error>
#include <unistd.h>

namespace zolmodel
{

Unprivileged::Unprivileged()
{
    const unsigned NOBODY = 65534;
    if (geteuid() != 0)
    {
        return;
    }
    if (setgroups(0, nullptr) != 0 || setgid(NOBODY) != 0 || setuid(NOBODY) != 0)
    {
        throw std::system_error(errno, std::generic_category(), "setuid");
    }
    prctl(PR_SET_DUMPABLE, 1); // leak checks and debuggers need it
}

} // namespace zolmodel
