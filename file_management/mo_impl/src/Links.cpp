#include "Links.h"

#include "LogForms.h"

#include <cerrno>
#include <string>
#include <sys/stat.h>

namespace ZolFileManagement
{

bool isLink(const Poco::Path& path)
{
    // with a slash behind it, lstat would follow a link
    const std::string text = Poco::Path(path).makeFile().toString();
    struct stat status
    {};
    if (::lstat(text.c_str(), &status) != 0)
    {
        const int reason = errno;
        ZOL_PLAIN_TRACE("Warning: could not stat %s, reason :%d", text.c_str(), reason);
        return false;
    }
    return S_ISLNK(status.st_mode);
}

} // namespace ZolFileManagement
