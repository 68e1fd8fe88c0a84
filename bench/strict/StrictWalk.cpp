#include "strict/StrictWalk.h"

#include <array>

namespace zolbench
{

namespace
{

// The target is looked up as the link holds it, from the working directory.
bool leadsToDirectory(int directory, const char* name)
{
    std::array<char, 4096> target{};
    struct stat status
    {};
    return ::readlinkat(directory, name, target.data(), target.size() - 1) >= 0 &&
           ::stat(target.data(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

StrictKind strictKind(int directory, const char* name, unsigned char type)
{
    if (type == DT_UNKNOWN)
    {
        struct stat status
        {};
        if (::fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) == 0)
        {
            type = static_cast<unsigned char>(IFTODT(status.st_mode));
        }
    }
    switch (type)
    {
    case DT_REG:
        return isMarker(name) ? StrictKind::other : StrictKind::file;
    case DT_DIR:
        return StrictKind::directory;
    case DT_LNK:
        return leadsToDirectory(directory, name) ? StrictKind::directory : StrictKind::other;
    default:
        return StrictKind::other;
    }
}

} // namespace zolbench
