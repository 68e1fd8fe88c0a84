#include "SpecialFiles.h"

#include "support/WorkingDirectory.h"

#include <cerrno>
#include <filesystem>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <system_error>
#include <unistd.h>

namespace zoltest
{

namespace
{

[[noreturn]] void fail(const std::string& path)
{
    throw std::system_error(errno, std::generic_category(), path);
}

} // namespace

std::string makePipe(const std::string& path)
{
    if (::mkfifo(path.c_str(), 0600) != 0)
    {
        fail(path);
    }
    return path;
}

std::string makeSocket(const std::string& path)
{
    const std::filesystem::path whole(path);
    // the address of a socket has no room for a long path
    const WorkingDirectory parent(whole.parent_path());
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    whole.filename().string().copy(address.sun_path, sizeof address.sun_path - 1);
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM, 0);
    if (descriptor < 0 ||
        ::bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
    {
        fail(path);
    }
    ::close(descriptor);
    return path;
}

} // namespace zoltest
