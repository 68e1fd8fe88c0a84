#include "ways/FloorWay.h"

#include "ways/DirectoryHandle.h"
#include "ways/DirectoryRead.h"

#include <sys/stat.h>

namespace zolbench
{

namespace
{

constexpr mode_t directoryMode = 0770;

std::uint64_t sizeOf(int directory, const char* name)
{
    struct stat status
    {};
    require(::fstatat(directory, name, &status, 0) == 0, name);
    return static_cast<std::uint64_t>(status.st_size);
}

bool hasFiles(int parent, const char* name)
{
    const DirectoryHandle directory(parent, name);
    bool found = false;
    readDirectory(directory.number(), [&](const char* entry, unsigned char type) {
        found = found || type != DT_DIR || hasFiles(directory.number(), entry);
    });
    return found;
}

} // namespace

void FloorWay::browse(const Task& task, Findings* findings)
{
    const DirectoryHandle directory(task.path);
    readDirectory(directory.number(), [&](const char* name, unsigned char) { note(findings, name); });
}

void FloorWay::count(const Task& task, Findings* findings)
{
    const DirectoryHandle directory(task.path);
    std::uint64_t number = 0;
    readDirectory(directory.number(),
                  [&](const char*, unsigned char type) { number += type == DT_REG ? 1 : 0; });
    note(findings, number);
}

void FloorWay::files(const Task& task, Findings* findings)
{
    const DirectoryHandle directory(task.path);
    readDirectory(directory.number(), [&](const char* name, unsigned char) {
        note(findings, name, sizeOf(directory.number(), name));
    });
}

void FloorWay::create(const Task& task, Findings*)
{
    for (const Item& item : task.items)
    {
        require(::mkdir(item.path.c_str(), directoryMode) == 0, "mkdir");
        require(::chmod(item.path.c_str(), directoryMode) == 0, "chmod");
    }
}

void FloorWay::remove(const Task& task, Findings*)
{
    const DirectoryHandle directory(task.path, O_PATH);
    for (const Item& item : task.items)
    {
        require(::unlinkat(directory.number(), item.name.c_str(), 0) == 0, "unlinkat");
    }
}

void FloorWay::removeMatching(const Task& task, Findings*)
{
    const DirectoryHandle directory(task.path);
    readDirectory(directory.number(), [&](const char* name, unsigned char) {
        require(::unlinkat(directory.number(), name, 0) == 0, "unlinkat");
    });
}

void FloorWay::checkEmpty(const Task& task, Findings* findings)
{
    note(findings, hasFiles(AT_FDCWD, task.path.c_str()) ? 0 : 1);
}

void FloorWay::exists(const Task& task, Findings* findings)
{
    std::uint64_t number = 0;
    for (const Item& item : task.items)
    {
        struct stat status
        {};
        number += ::stat(item.path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode) ? 1 : 0;
    }
    note(findings, number);
}

void FloorWay::size(const Task& task, Findings* findings)
{
    std::uint64_t sum = 0;
    for (const Item& item : task.items)
    {
        sum += sizeOf(AT_FDCWD, item.path.c_str());
    }
    note(findings, sum);
}

} // namespace zolbench
