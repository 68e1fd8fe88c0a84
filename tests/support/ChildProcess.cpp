#include "support/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <sys/resource.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

#ifdef ZOL_COVERAGE
extern "C" void __gcov_dump();
#endif

namespace zoltest
{

namespace
{

[[noreturn]] void fail(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

[[noreturn]] void actAsChild(const std::function<int()>& function, int standardError) noexcept
{
    const rlimit noCoreFile = {0, 0};
    setrlimit(RLIMIT_CORE, &noCoreFile);
    dup2(standardError, STDERR_FILENO);
    close(standardError);
#ifdef ZOL_COVERAGE
    // what leads to the end of the process counts as well
    std::signal(SIGABRT, [](int) { __gcov_dump(); });
#endif
    const int status = function();
#ifdef ZOL_COVERAGE
    __gcov_dump();
#endif
    // the parent's buffers and atexit functions are the parent's
    _exit(status);
}

std::string readAll(int descriptor)
{
    std::string text;
    std::array<char, 4096> buffer{};
    ssize_t got = 0;
    while ((got = read(descriptor, buffer.data(), buffer.size())) > 0 || (got < 0 && errno == EINTR))
    {
        text.append(buffer.data(), got > 0 ? static_cast<std::size_t>(got) : 0);
    }
    return text;
}

} // namespace

ChildOutcome runInChild(const std::function<int()>& function)
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
    {
        fail("pipe");
    }
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child < 0)
    {
        fail("fork");
    }
    if (child == 0)
    {
        close(ends[0]);
        actAsChild(function, ends[1]);
    }
    close(ends[1]);
    ChildOutcome outcome;
    outcome.standardError = readAll(ends[0]);
    close(ends[0]);
    int status = 0;
    while (waitpid(child, &status, 0) < 0)
    {
        if (errno != EINTR)
        {
            fail("waitpid");
        }
    }
    if (WIFSIGNALED(status))
    {
        outcome.signal = WTERMSIG(status);
    }
    else
    {
        outcome.exitStatus = WEXITSTATUS(status);
    }
    return outcome;
}

} // namespace zoltest
