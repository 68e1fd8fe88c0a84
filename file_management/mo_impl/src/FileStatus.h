#pragma once

#include <Poco/File.h>
#include <Poco/Path.h>
#include <string>
#include <sys/stat.h>

namespace ZolFileManagement
{

/// What one look at a path tells, links followed. Poco::File looks anew for each question.
class FileStatus
{
public:
    explicit FileStatus(const Poco::Path& path)
        : FileStatus(path.toString())
    {}
    explicit FileStatus(const std::string& path); ///< its text

    bool exists() const { return _exists; }
    bool isDirectory() const { return _exists && S_ISDIR(_status.st_mode); }
    /// Of what exists.
    Poco::File::FileSize size() const { return static_cast<Poco::File::FileSize>(_status.st_size); }

private:
    bool _exists;
    struct stat _status = {};
};

} // namespace ZolFileManagement
