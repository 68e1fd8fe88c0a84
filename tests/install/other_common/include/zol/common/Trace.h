#pragma once

namespace Zol
{

struct Trace
{
    enum Subsystem : unsigned int
    {
        FileM = 7,
        Common = 9
    };
};

} // namespace Zol
