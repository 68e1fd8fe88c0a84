#include "rig/Stage.h"

#include "ways/DirectoryHandle.h"
#include "ways/Require.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <sys/stat.h>

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

std::size_t entriesIn(const std::string& path)
{
    std::error_code isMissing;
    const std::filesystem::directory_iterator entries(path, isMissing);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

} // namespace

Stage::Stage(const std::filesystem::path& parent)
    : _root(parent / "zol_bench.XXXXXX")
{
    require(::mkdtemp(_root.data()) != nullptr, "mkdtemp");
}

Stage::~Stage()
{
    std::error_code ignored;
    std::filesystem::remove_all(_root, ignored);
}

Task Stage::in(const std::string& directory) const
{
    Task task;
    task.dn = fileM + ",FileGroup=" + directory;
    task.path = _root + '/' + directory;
    task.expression = ".*";
    return task;
}

Task Stage::files(std::size_t number) const
{
    Task task = in("files");
    for (std::size_t i = 0; i < number; ++i)
    {
        const std::string name = numbered("file%07zu.log", i);
        task.items.push_back({"", name, task.dn + ",FileInformation=" + name, task.path + '/' + name});
    }
    return task;
}

Task Stage::directories(std::size_t number) const
{
    Task task = in("directories");
    for (std::size_t i = 0; i < number; ++i)
    {
        const std::string name = numbered("directory%07zu", i);
        task.items.push_back({task.dn, name, "", task.path + '/' + name});
    }
    return task;
}

Task Stage::chains(std::size_t number, std::size_t depth) const
{
    Task task = in("chains");
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

Task Stage::transactions(std::size_t number) const
{
    Task task;
    task.items.resize(number);
    return task;
}

void Stage::fill(const Task& task) const
{
    if (entriesIn(task.path) == task.items.size())
    {
        return;
    }
    empty(task);
    const DirectoryHandle directory(task.path);
    for (std::size_t i = 0; i < task.items.size(); ++i)
    {
        const int file = ::openat(directory.number(), task.items[i].name.c_str(), O_CREAT | O_WRONLY, 0640);
        require(file >= 0 && ::ftruncate(file, static_cast<off_t>(i % 1000)) == 0, "file");
        ::close(file);
    }
}

void Stage::empty(const Task& task) const
{
    std::filesystem::remove_all(task.path);
    std::filesystem::create_directory(task.path);
}

void Stage::make(const Task& task) const
{
    if (entriesIn(task.path) == task.items.size())
    {
        return;
    }
    empty(task);
    for (const Item& item : task.items)
    {
        require(::mkdir(item.path.c_str(), 0750) == 0, "mkdir");
    }
}

} // namespace zolbench
