#include "FileStatus.h"

#include <Poco/Bugcheck.h>

namespace ZolFileManagement
{

FileStatus::FileStatus(const std::string& path)
{
    // an empty path and the slash behind a directory are treated as Poco::File does
    poco_assert(!path.empty());
    const bool hasSlashBehind = path.size() > 1 && path.ends_with('/');
    _exists = ::stat(hasSlashBehind ? path.substr(0, path.size() - 1).c_str() : path.c_str(), &_status) == 0;
}

} // namespace ZolFileManagement
