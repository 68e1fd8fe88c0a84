#include "Links.h"

#include "LogForms.h"

#include <cerrno>
#include <sys/stat.h>

namespace ZolFileManagement
{

bool isLink(const Poco::Path& path)
{
    // with a slash behind it, lstat would follow a link
    mode_t type = 0;
    return isLink(Poco::Path(path).makeFile().toString(), type);
}

bool isLink(const std::string& text, mode_t& type)
{
    struct stat status
    {};
    if (::lstat(text.c_str(), &status) != 0)
    {
        const int reason = errno;
        ZOL_PLAIN_TRACE("Warning: could not stat %s, reason :%d", text.c_str(), reason);
        type = 0;
        return false;
    }
    type = status.st_mode & S_IFMT;
    return S_ISLNK(type);
}

} // namespace ZolFileManagement
