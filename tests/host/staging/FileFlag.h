#pragma once

#include <fcntl.h>
#include <linux/fs.h>
#include <string>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zoltest
{

/// A flag such as FS_IMMUTABLE_FL of a file or directory, taken away at the end.
class FileFlag
{
public:
    FileFlag(const std::string& path, int flag)
        : _descriptor(open(path.c_str(), O_RDONLY | O_CLOEXEC))
        , _isSet(ioctl(_descriptor, FS_IOC_GETFLAGS, &_before) == 0 && set(_before | flag))
    {}
    FileFlag(const FileFlag&) = delete;
    FileFlag& operator=(const FileFlag&) = delete;
    ~FileFlag()
    {
        takeAway();
        close(_descriptor);
    }

    /// False where the file system has no such flag or the user may not set it.
    bool isSet() const { return _isSet; }
    void takeAway() { _isSet = _isSet && !set(_before); }

private:
    bool set(int flags) const { return ioctl(_descriptor, FS_IOC_SETFLAGS, &flags) == 0; }

    int _descriptor;
    int _before = 0;
    bool _isSet;
};

} // namespace zoltest
