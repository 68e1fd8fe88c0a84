#include "staging/Rights.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <vector>

namespace zolhost
{

namespace
{

bool isOwn(const DiskEntry& entry)
{
    return geteuid() == 0 || entry.owner == geteuid();
}

bool isInGroup(gid_t group)
{
    std::vector<gid_t> groups(static_cast<std::size_t>(std::max(getgroups(0, nullptr), 0)));
    // asked for none, it would give their number once more
    const int taken = groups.empty() ? 0 : getgroups(static_cast<int>(groups.size()), groups.data());
    groups.resize(static_cast<std::size_t>(std::max(taken, 0)));
    return group == getegid() || std::ranges::find(groups, group) != groups.end();
}

const char* nameOf(EntryKind kind)
{
    return kind == EntryKind::Directory ? "the directory" : kind == EntryKind::Link ? "the link" : "the file";
}

} // namespace

std::string reason(int error, const std::string& from)
{
    return std::strerror(error) + (from.empty() ? "" : ": " + from);
}

std::string whyNotWritable(const std::string& directory)
{
    if (faccessat(AT_FDCWD, directory.c_str(), W_OK | X_OK, AT_EACCESS) == 0)
    {
        return {};
    }
    switch (errno)
    {
    case EACCES:
        return reason(EACCES, NOT_WRITABLE);
    case EPERM:
        return reason(EPERM, "the directory above is immutable");
    default:
        return reason(errno);
    }
}

std::string whyNotRemovable(const DiskEntry& directory, const DiskEntry& entry)
{
    if (directory.isAppendOnly)
    {
        return reason(EPERM, "the directory above is append-only");
    }
    if (entry.isImmutable || entry.isAppendOnly)
    {
        return reason(EPERM, std::string(nameOf(entry.kind)) +
                                 (entry.isImmutable ? " is immutable" : " is append-only"));
    }
    if ((directory.mode & S_ISVTX) != 0 && !isOwn(directory) && !isOwn(entry))
    {
        return reason(EPERM, "the directory above is sticky and " + std::string(nameOf(entry.kind)) +
                                 " belongs to another user");
    }
    return entry.isMountPoint ? reason(EBUSY, "a file system is mounted there") : "";
}

std::string whyModeCantChange(const std::string& path, const DiskEntry& directory)
{
    struct statvfs fileSystem = {};
    if (statvfs(path.c_str(), &fileSystem) == 0 && (fileSystem.f_flag & ST_RDONLY) != 0)
    {
        return reason(EROFS);
    }
    if (!isOwn(directory))
    {
        return reason(EPERM, "the directory belongs to another user");
    }
    return directory.isImmutable    ? reason(EPERM, "the directory is immutable")
           : directory.isAppendOnly ? reason(EPERM, "the directory is append-only")
                                    : "";
}

mode_t modeAfterChange(mode_t wanted, const DiskEntry& directory)
{
    const bool keepsGroupBit = geteuid() == 0 || isInGroup(directory.group);
    return keepsGroupBit ? wanted : wanted & ~static_cast<mode_t>(S_ISGID);
}

mode_t creationMask()
{
    // to ask for it by the call that sets it would change it for all threads
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
    {
        if (word == "Umask:")
        {
            mode_t mask = 0;
            status >> std::oct >> mask;
            return mask;
        }
    }
    return S_IWGRP | S_IWOTH;
}

} // namespace zolhost
