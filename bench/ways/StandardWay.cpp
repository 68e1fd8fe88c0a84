#include "ways/StandardWay.h"

#include <algorithm>
#include <filesystem>
#include <vector>

namespace zolbench
{

namespace fs = std::filesystem;

namespace
{

struct File
{
    std::string name;
    std::uint64_t size;
    fs::file_time_type time;

    bool operator<(const File& other) const { return name < other.name; }
};

} // namespace

void StandardWay::browse(const Task& task, Findings* findings)
{
    std::vector<std::string> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(task.path))
    {
        if (entry.is_regular_file())
        {
            names.push_back(entry.path().filename().string());
            note(findings, names.back().c_str());
        }
    }
}

void StandardWay::count(const Task& task, Findings* findings)
{
    const auto number =
        std::count_if(fs::directory_iterator(task.path), fs::directory_iterator(),
                      [](const fs::directory_entry& entry) { return entry.is_regular_file(); });
    note(findings, static_cast<std::uint64_t>(number));
}

void StandardWay::files(const Task& task, Findings* findings)
{
    std::vector<File> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(task.path))
    {
        if (entry.is_regular_file())
        {
            files.push_back({entry.path().filename().string(), entry.file_size(), entry.last_write_time()});
        }
    }
    std::sort(files.begin(), files.end());
    for (const File& file : files)
    {
        note(findings, file.name.c_str(), file.size);
    }
}

void StandardWay::create(const Task& task, Findings*)
{
    for (const Item& item : task.items)
    {
        fs::create_directory(item.path);
        fs::permissions(item.path, fs::perms::owner_all | fs::perms::group_all);
    }
}

void StandardWay::remove(const Task& task, Findings*)
{
    for (const Item& item : task.items)
    {
        fs::remove(item.path);
    }
}

void StandardWay::checkEmpty(const Task& task, Findings* findings)
{
    const fs::recursive_directory_iterator tree(task.path);
    const bool isEmpty =
        std::all_of(begin(tree), end(tree), [](const auto& entry) { return entry.is_directory(); });
    note(findings, isEmpty ? 1 : 0);
}

void StandardWay::exists(const Task& task, Findings* findings)
{
    std::uint64_t number = 0;
    for (const Item& item : task.items)
    {
        const fs::file_status status = fs::status(item.path);
        number += fs::exists(status) && !fs::is_directory(status) ? 1 : 0;
    }
    note(findings, number);
}

void StandardWay::size(const Task& task, Findings* findings)
{
    std::uint64_t sum = 0;
    for (const Item& item : task.items)
    {
        sum += fs::file_size(item.path);
    }
    note(findings, sum);
}

} // namespace zolbench
