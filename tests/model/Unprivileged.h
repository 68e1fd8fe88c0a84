#pragma once

namespace zolmodel
{

/// Gives up the privileges of root for good: what a wrong component may remove then is little.
class Unprivileged
{
public:
    Unprivileged();
};

} // namespace zolmodel
