#include "OpenWatch.h"

#include <array>
#include <stdexcept>
#include <sys/inotify.h>
#include <unistd.h>

namespace zolfuzz
{

OpenWatch::OpenWatch(const std::vector<std::string>& paths)
    : _descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    for (const auto& path : paths)
    {
        if (_descriptor < 0 || inotify_add_watch(_descriptor, path.c_str(), IN_OPEN) < 0)
        {
            throw std::runtime_error("no watch on " + path);
        }
    }
}

OpenWatch::~OpenWatch()
{
    close(_descriptor);
}

bool OpenWatch::sawOpening() const
{
    alignas(inotify_event) std::array<char, 4096> events{};
    return read(_descriptor, events.data(), events.size()) > 0;
}

} // namespace zolfuzz
