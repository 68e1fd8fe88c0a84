#include "Links.h"

#include "LogForms.h"

#include <cerrno>
#include <sys/stat.h>

namespace ZolFileManagement
{

bool isLink(const Poco::Path& path)
{
    // with a slash behind it, lstat would follow a link
    return S_ISLNK(entryType(Poco::Path(path).makeFile().toString()));
}

mode_t entryType(const std::string& text)
{
    struct stat status
    {};
    if (::lstat(text.c_str(), &status) != 0)
    {
        const int reason = errno;
        ZOL_PLAIN_TRACE("Warning: could not stat %s, reason :%d", text.c_str(), reason);
        return 0;
    }
    return status.st_mode & S_IFMT;
}

} // namespace ZolFileManagement
