#include "sftp/SftpWay.h"

#include <algorithm>
#include <sys/stat.h>

namespace zolbench
{

namespace
{

constexpr std::uint32_t directoryMode = 0770;

// As many as OpenSSH's own client has under way.
constexpr std::size_t mostRequests = 64;

struct File
{
    std::string name;
    std::uint64_t size;
    std::uint32_t changed;

    bool operator<(const File& other) const { return name < other.name; }
};

/// Asks for all items with a limit on what is under way. `ask` is called for each, `take` once for each
/// answer.
template<class Items, class Ask, class Take>
void pipeline(const Items& items, std::size_t answersAnItem, Ask ask, Take take)
{
    const std::size_t ahead = mostRequests / answersAnItem;
    std::size_t asked = 0;
    for (std::size_t taken = 0; taken < items.size(); ++taken)
    {
        // half of them go out together, so that neither side waits for each single one
        if (asked - taken <= ahead / 2)
        {
            for (; asked < items.size() && asked - taken < ahead; ++asked)
            {
                ask(items[asked]);
            }
        }
        for (std::size_t i = 0; i < answersAnItem; ++i)
        {
            take();
        }
    }
}

} // namespace

SftpWay::SftpWay(const std::filesystem::path& server)
    : Way("sftp")
    , _client(server)
{}

/// Calls `visit(const SftpClient::Entry&)` for each entry of a directory but `.` and `..`, with so many
/// requests for entries under way.
template<class Visit>
void SftpWay::list(const std::string& path, std::size_t ahead, Visit visit)
{
    _client.askOpenDirectory(path);
    const std::string handle = _client.takeHandle();
    for (std::size_t i = 0; i < ahead; ++i)
    {
        _client.askReadDirectory(handle);
    }
    std::vector<SftpClient::Entry> entries;
    while (_client.takeEntries(entries))
    {
        _client.askReadDirectory(handle);
        for (const SftpClient::Entry& entry : entries)
        {
            if (entry.name != "." && entry.name != "..")
            {
                visit(entry);
            }
        }
    }
    for (std::size_t i = 1; i < ahead; ++i)
    {
        _client.takeEntries(entries);
    }
    _client.askClose(handle);
    _client.takeDone();
}

void SftpWay::browse(const Task& task, Findings* findings)
{
    std::vector<std::string> names;
    list(task.path, mostRequests, [&](const SftpClient::Entry& entry) {
        if (S_ISREG(entry.mode))
        {
            names.emplace_back(entry.name);
            note(findings, names.back().c_str());
        }
    });
}

void SftpWay::count(const Task& task, Findings* findings)
{
    std::uint64_t number = 0;
    list(task.path, mostRequests,
         [&](const SftpClient::Entry& entry) { number += S_ISREG(entry.mode) ? 1 : 0; });
    note(findings, number);
}

void SftpWay::files(const Task& task, Findings* findings)
{
    std::vector<File> files;
    list(task.path, mostRequests, [&](const SftpClient::Entry& entry) {
        if (S_ISREG(entry.mode))
        {
            files.push_back({std::string(entry.name), entry.size, entry.changed});
        }
    });
    std::sort(files.begin(), files.end());
    for (const File& file : files)
    {
        note(findings, file.name.c_str(), file.size);
    }
}

void SftpWay::create(const Task& task, Findings*)
{
    pipeline(
        task.items, 2,
        [&](const Item& item) {
            _client.askMakeDirectory(item.path, directoryMode);
            _client.askSetMode(item.path, directoryMode); // whatever the server's mask
        },
        [&] { _client.takeDone(); });
}

void SftpWay::remove(const Task& task, Findings*)
{
    pipeline(
        task.items, 1, [&](const Item& item) { _client.askRemove(item.path); }, [&] { _client.takeDone(); });
}

void SftpWay::removeMatching(const Task& task, Findings*)
{
    std::vector<std::string> paths;
    list(task.path, mostRequests, [&](const SftpClient::Entry& entry) {
        if (S_ISREG(entry.mode))
        {
            paths.push_back(task.path + '/');
            paths.back() += entry.name;
        }
    });
    pipeline(
        paths, 1, [&](const std::string& path) { _client.askRemove(path); }, [&] { _client.takeDone(); });
}

bool SftpWay::hasFiles(const std::string& path)
{
    // what is there and the end of it
    constexpr std::size_t ahead = 2;
    std::vector<std::string> children;
    bool found = false;
    list(path, ahead, [&](const SftpClient::Entry& entry) {
        found = found || S_ISREG(entry.mode);
        if (S_ISDIR(entry.mode))
        {
            children.push_back(path + '/');
            children.back() += entry.name;
        }
    });
    return found ||
           std::any_of(children.begin(), children.end(), [&](const auto& child) { return hasFiles(child); });
}

void SftpWay::checkEmpty(const Task& task, Findings* findings)
{
    note(findings, hasFiles(task.path) ? 0 : 1);
}

void SftpWay::exists(const Task& task, Findings* findings)
{
    std::uint64_t number = 0;
    for (const Item& item : task.items)
    {
        _client.askStatus(item.path);
        const auto status = _client.takeStatus();
        number += status && !S_ISDIR(status->mode) ? 1 : 0;
    }
    note(findings, number);
}

void SftpWay::size(const Task& task, Findings* findings)
{
    std::uint64_t sum = 0;
    for (const Item& item : task.items)
    {
        _client.askStatus(item.path);
        const auto status = _client.takeStatus();
        sum += status ? status->size : 0;
    }
    note(findings, sum);
}

} // namespace zolbench
