#include "model/Unprivileged.h"

#include "support/OrdinaryUser.h"

namespace zolmodel
{

Unprivileged::Unprivileged()
{
    zoltest::becomeOrdinaryUser();
}

} // namespace zolmodel
