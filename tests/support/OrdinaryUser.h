#pragma once

#include <cerrno>
#include <grp.h>
#include <sys/prctl.h>
#include <system_error>
#include <unistd.h>

namespace zoltest
{

/// Whom permission bits bind: the user who runs the tests, or nobody in the place of root.
inline uid_t ordinaryUser()
{
    constexpr uid_t nobody = 65534;
    return ::geteuid() == 0 ? nobody : ::geteuid();
}

/// From now on permission bits bind this process.
inline void becomeOrdinaryUser()
{
    const uid_t user = ordinaryUser();
    if (::geteuid() == user)
    {
        return;
    }
    if (::setgroups(0, nullptr) != 0 || ::setgid(user) != 0 || ::setuid(user) != 0)
    {
        throw std::system_error(errno, std::generic_category(), "setuid");
    }
    ::prctl(PR_SET_DUMPABLE, 1); // leak checks and debuggers need it
}

} // namespace zoltest
