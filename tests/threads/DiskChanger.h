#pragma once

#include <string>
#include <sys/types.h>

namespace threadtest
{

/// Another program that makes, renames, swaps and removes what is in the tree, from its construction to its
/// end. The caller must be the only thread when it is made.
class DiskChanger
{
public:
    DiskChanger(const std::string& root, const std::string& outside, unsigned long seed);
    DiskChanger(const DiskChanger&) = delete;
    DiskChanger& operator=(const DiskChanger&) = delete;
    ~DiskChanger();

private:
    pid_t _process;
};

} // namespace threadtest
