#pragma once

namespace Zol
{

/// Handles of the subsystems that trace.
class Trace
{
public:
    enum Subsystem : unsigned int
    {
        Common = 1,
        FileM = 2
    };
};

} // namespace Zol
