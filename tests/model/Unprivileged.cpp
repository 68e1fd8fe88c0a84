#include "model/Unprivileged.h"

#include "support/OrdinaryUser.h"

/// For the leak sanitizer, which asks for them when it finds a leak: by then a file may be out of reach.
extern "C" const char* __lsan_default_suppressions();

const char* __lsan_default_suppressions()
{
    return "leak:ZolFileManagement::FileMMoImpl::join\n";
}

namespace zolmodel
{

Unprivileged::Unprivileged()
{
    zoltest::becomeOrdinaryUser();
}

} // namespace zolmodel
