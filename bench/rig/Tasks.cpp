#include "rig/Tasks.h"

#include <array>
#include <cstdio>

namespace zolbench
{

namespace
{

const std::string fileM = "ManagedElement=1,SystemFunctions=1,FileM=1";

std::string numbered(const char* form, std::size_t number)
{
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), form, number);
    return text.data();
}

Task in(const std::string& root, const std::string& directory)
{
    Task task;
    task.dn = fileM + ",FileGroup=" + directory;
    task.path = root + '/' + directory;
    task.expression = ".*";
    return task;
}

} // namespace

Task filesIn(const std::string& root, std::size_t number)
{
    Task task = in(root, "files");
    for (std::size_t i = 0; i < number; ++i)
    {
        const std::string name = numbered("file%07zu.log", i);
        task.items.push_back({"", name, task.dn + ",FileInformation=" + name, task.path + '/' + name});
    }
    return task;
}

Task directoriesIn(const std::string& root, std::size_t number)
{
    Task task = in(root, "directories");
    for (std::size_t i = 0; i < number; ++i)
    {
        const std::string name = numbered("directory%07zu", i);
        task.items.push_back({task.dn, name, "", task.path + '/' + name});
    }
    return task;
}

Task chainsIn(const std::string& root, std::size_t number, std::size_t depth)
{
    Task task = in(root, "chains");
    Item last;
    for (std::size_t i = 0; i < number; ++i)
    {
        const bool isTop = i % depth == 0;
        last.parentDn = isTop ? task.dn : last.parentDn + ",FileGroup=" + last.name;
        last.name = isTop ? numbered("chain%07zu", i / depth) : "d";
        last.path = (isTop ? task.path : last.path) + '/' + last.name;
        task.items.push_back(last);
    }
    return task;
}

Task transactions(std::size_t number)
{
    Task task;
    task.items.resize(number);
    return task;
}

} // namespace zolbench
