#pragma once

namespace Zol
{

/// Handles of the subsystems that trace.
class Trace
{
public:
    /// Who traces.
    enum Subsystem : unsigned int
    {
        Common = 1, ///< the companion library
        FileM = 2   ///< the component
    };
};

} // namespace Zol
