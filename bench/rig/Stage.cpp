#include "rig/Stage.h"

#include "ways/DirectoryHandle.h"
#include "ways/Require.h"

#include <cstdlib>
#include <iterator>
#include <sys/stat.h>

namespace zolbench
{

namespace
{

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
