#pragma once

#include "ways/Way.h"

namespace zolbench
{

/// The kernel's calls that the work can't do without, and nothing else: no names kept, no rules asked.
class FloorWay : public Way
{
public:
    FloorWay()
        : Way("floor")
    {}

    void browse(const Task& task, Findings* findings) override;
    void count(const Task& task, Findings* findings) override;
    void files(const Task& task, Findings* findings) override;
    void create(const Task& task, Findings* findings) override;
    void remove(const Task& task, Findings* findings) override;
    void removeMatching(const Task& task, Findings* findings) override;
    void checkEmpty(const Task& task, Findings* findings) override;
    void exists(const Task& task, Findings* findings) override;
    void size(const Task& task, Findings* findings) override;
    void intend(const Task&) override {}
    void apply(const Task& task, Findings* findings) override { create(task, findings); }
};

} // namespace zolbench
