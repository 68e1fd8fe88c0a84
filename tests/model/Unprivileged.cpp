#include "model/Unprivileged.h"

#include "support/OrdinaryUser.h"

/// There under the leak sanitizer alone.
extern "C" int __lsan_do_recoverable_leak_check() __attribute__((weak));

namespace zolmodel
{

Unprivileged::Unprivileged()
{
    if (__lsan_do_recoverable_leak_check != nullptr)
    {
        // reads the suppressions, which may lie where root alone may read
        __lsan_do_recoverable_leak_check();
    }
    zoltest::becomeOrdinaryUser();
}

} // namespace zolmodel
