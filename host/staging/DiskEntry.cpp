#include "staging/DiskEntry.h"

#include <array>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace zolhost
{

namespace
{

EntryKind kindOf(mode_t mode)
{
    switch (mode & S_IFMT)
    {
    case S_IFDIR:
        return EntryKind::Directory;
    case S_IFREG:
        return EntryKind::File;
    case S_IFLNK:
        return EntryKind::Link;
    default:
        return EntryKind::Other;
    }
}

std::int64_t nanoseconds(const statx_timestamp& time)
{
    constexpr std::int64_t A_SECOND = 1'000'000'000;
    return time.tv_sec * A_SECOND + time.tv_nsec;
}

} // namespace

std::optional<DiskEntry> lookUp(const std::string& path)
{
    struct statx status = {};
    if (statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
    {
        return std::nullopt;
    }
    DiskEntry entry;
    entry.kind = kindOf(status.stx_mode);
    entry.mode = status.stx_mode & 07777U;
    entry.owner = status.stx_uid;
    entry.group = status.stx_gid;
    entry.bytes = status.stx_size;
    entry.device = makedev(status.stx_dev_major, status.stx_dev_minor);
    entry.number = status.stx_ino;
    entry.born = (status.stx_mask & STATX_BTIME) != 0 ? nanoseconds(status.stx_btime) : 0;
    entry.modified = nanoseconds(status.stx_mtime);
    const auto attributes = status.stx_attributes & status.stx_attributes_mask;
    entry.isImmutable = (attributes & STATX_ATTR_IMMUTABLE) != 0;
    entry.isAppendOnly = (attributes & STATX_ATTR_APPEND) != 0;
    entry.isMountPoint = (attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    return entry;
}

bool meansAbsence(int error)
{
    return error == ENOENT || error == ENOTDIR || error == ENAMETOOLONG || error == ELOOP;
}

std::optional<std::vector<std::string>> namesIn(const std::string& directory)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> stream(opendir(directory.c_str()), closedir);
    if (stream == nullptr)
    {
        return std::nullopt;
    }
    std::vector<std::string> names;
    while (const dirent* const entry = readdir(stream.get()))
    {
        std::string name = &entry->d_name[0];
        if (name != "." && name != "..")
        {
            names.push_back(std::move(name));
        }
    }
    return names;
}

std::string linkTargetOf(const std::string& path)
{
    std::array<char, PATH_MAX> target{};
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    return {target.data(), length > 0 ? static_cast<std::size_t>(length) : 0};
}

std::string withoutSlash(const std::string& path)
{
    return path.size() > 1 && path.back() == '/' ? path.substr(0, path.size() - 1) : path;
}

std::string directoryAbove(const std::string& path)
{
    return path.substr(0, path.rfind('/'));
}

std::string lastNameOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

std::string pathIn(const std::string& directory, const std::string& name)
{
    std::string path;
    path.reserve(directory.size() + 1 + name.size());
    return path.append(directory).append(1, '/').append(name);
}

} // namespace zolhost
