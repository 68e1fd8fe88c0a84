#pragma once

#include "ways/Way.h"

namespace zolbench
{

/// What a program writes with std::filesystem that needs the same results.
class StandardWay : public Way
{
public:
    StandardWay()
        : Way("std::filesystem")
    {}

    void browse(const Task& task, Findings* findings) override;
    void count(const Task& task, Findings* findings) override;
    void files(const Task& task, Findings* findings) override;
    void create(const Task& task, Findings* findings) override;
    void remove(const Task& task, Findings* findings) override;
    void checkEmpty(const Task& task, Findings* findings) override;
    void exists(const Task& task, Findings* findings) override;
    void size(const Task& task, Findings* findings) override;
};

} // namespace zolbench
