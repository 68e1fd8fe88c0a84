#include "filem/output/Terminal.h"

#include <cstdlib>
#include <poll.h>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zolhost::filem::terminal
{

bool isTerminal(int descriptor)
{
    return isatty(descriptor) != 0;
}

Size sizeOf(int descriptor)
{
    winsize size = {};
    if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_row == 0 || size.ws_col == 0)
    {
        return {24, 80};
    }
    return {size.ws_row, size.ws_col};
}

bool isReaderGone(int descriptor)
{
    pollfd pipe = {descriptor, 0, 0};
    return poll(&pipe, 1, 0) == 1 && (pipe.revents & POLLERR) != 0;
}

bool takesColours(int descriptor)
{
    const char* const refusal = std::getenv("NO_COLOR"); // NOLINT(concurrency-mt-unsafe): read at the start
    const char* const kind = std::getenv("TERM");        // NOLINT(concurrency-mt-unsafe): read at the start
    const bool isRefused = refusal != nullptr && *refusal != '\0';
    const bool isDumb = kind == nullptr || std::string_view(kind) == "dumb";
    return isTerminal(descriptor) && !isRefused && !isDumb;
}

} // namespace zolhost::filem::terminal
