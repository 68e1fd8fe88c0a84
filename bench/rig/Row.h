#pragma once

#include "ways/Way.h"

#include <functional>
#include <optional>
#include <string>

namespace zolbench
{

/// What the library is to keep to in a row, where it is to keep to something.
struct Goal
{
    std::optional<double> calls;  ///< system calls an item
    std::optional<double> strict; ///< its time over that of the strict form
    std::optional<double> sftp;   ///< its time over that of sftp-server
};

/// One kind of work on one tree.
struct Row
{
    std::string work;
    Task task;
    std::function<void(const Task&)> setUp; ///< the disk, before each measurement
    Way::Work perform;
    Goal goal;
    bool intendsFirst = false; ///< what is measured is the second half alone

    void prepare(Way& way) const
    {
        setUp(task);
        if (intendsFirst)
        {
            way.intend(task);
        }
    }
};

} // namespace zolbench
