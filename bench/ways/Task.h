#pragma once

#include <string>
#include <vector>

namespace zolbench
{

/// A directory or file that a task is about, under each name that a way of doing it may want.
struct Item
{
    std::string parentDn;
    std::string name;
    std::string dn;
    std::string path;
};

/// What is to be done, stated beforehand so that no way pays for stating it.
struct Task
{
    std::string dn;   ///< of the directory that is worked in
    std::string path; ///< of the same
    std::vector<Item> items;
    std::string expression;
};

} // namespace zolbench
