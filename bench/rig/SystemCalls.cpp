#include "rig/SystemCalls.h"

#include "ways/Require.h"

#include <array>
#include <csignal>
#include <exception>
#include <iostream>
#include <numeric>
#include <string_view>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zolbench
{

namespace
{

// Stops that come of a system call and not of a signal, as PTRACE_O_TRACESYSGOOD marks them.
constexpr int systemCallStop = SIGTRAP | 0x80;

constexpr int childFailed = 1;
constexpr int tracingForbidden = 2;

bool isOfMemoryOrThreads(std::uint64_t number)
{
    constexpr std::array<std::uint64_t, 8> numbers{SYS_brk,      SYS_mmap,    SYS_munmap,      SYS_mremap,
                                                   SYS_mprotect, SYS_madvise, SYS_sched_yield, SYS_futex};
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

// The parent stops it before and after the work. The call that stops it is its own, so that is one too many.
[[noreturn]] void runChild(const std::function<void()>& preparation, const std::function<void()>& work)
{
    int status = childFailed;
    try
    {
        const pid_t self = ::getpid();
        if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        {
            ::_exit(tracingForbidden);
        }
        preparation();
        ::kill(self, SIGSTOP);
        work();
        ::kill(self, SIGSTOP);
        status = 0;
    }
    catch (const std::exception& failure)
    {
        std::cerr << "a traced child: " << failure.what() << '\n';
    }
    // what the parent has opened is the parent's to close
    ::_exit(status);
}

int waitFor(pid_t child)
{
    int status = 0;
    require(::waitpid(child, &status, 0) == child, "waitpid");
    if (WIFSTOPPED(status))
    {
        return WSTOPSIG(status);
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == tracingForbidden)
    {
        throw std::system_error(EPERM, std::generic_category(), "ptrace");
    }
    throw std::runtime_error("a traced child has failed");
}

void go(pid_t child, __ptrace_request how, int signal = 0)
{
    require(::ptrace(how, child, nullptr, signal) == 0, "ptrace");
}

void waitForStop(pid_t child)
{
    for (int signal = waitFor(child); signal != SIGSTOP; signal = waitFor(child))
    {
        go(child, PTRACE_CONT, signal);
    }
}

SystemCalls trace(pid_t child)
{
    waitForStop(child);
    require(::ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) == 0,
            "ptrace");
    SystemCalls calls;
    go(child, PTRACE_SYSCALL);
    for (int stop = waitFor(child); stop != SIGSTOP; stop = waitFor(child))
    {
        __ptrace_syscall_info info{};
        require(::ptrace(PTRACE_GET_SYSCALL_INFO, child, sizeof info, &info) > 0, "ptrace");
        if (stop == systemCallStop && info.op == PTRACE_SYSCALL_INFO_ENTRY &&
            !isOfMemoryOrThreads(info.entry.nr))
        {
            ++calls[info.entry.nr];
        }
        go(child, PTRACE_SYSCALL, stop == systemCallStop ? 0 : stop);
    }
    calls.erase(SYS_kill);
    return calls;
}

void end(pid_t child)
{
    ::kill(child, SIGKILL);
    int status = 0;
    ::waitpid(child, &status, 0);
}

} // namespace

SystemCalls systemCallsOf(const std::function<void()>& preparation, const std::function<void()>& work)
{
    std::cerr.flush();
    const pid_t child = ::fork();
    require(child >= 0, "fork");
    if (child == 0)
    {
        runChild(preparation, work);
    }
    try
    {
        const SystemCalls calls = trace(child);
        end(child);
        return calls;
    }
    catch (...)
    {
        end(child);
        throw;
    }
}

std::uint64_t total(const SystemCalls& calls)
{
    return std::accumulate(calls.begin(), calls.end(), std::uint64_t{0},
                           [](std::uint64_t sum, const auto& call) { return sum + call.second; });
}

std::string systemCallName(std::uint64_t number)
{
    static const std::map<std::uint64_t, std::string_view> names{
        {SYS_openat, "openat"},
        {SYS_close, "close"},
        {SYS_getdents64, "getdents64"},
        {SYS_newfstatat, "newfstatat"},
        {SYS_fstat, "fstat"},
        {SYS_mkdirat, "mkdirat"},
        {SYS_unlinkat, "unlinkat"},
        {SYS_fchmodat, "fchmodat"},
        {SYS_readlinkat, "readlinkat"},
        {SYS_faccessat, "faccessat"},
        {SYS_faccessat2, "faccessat2"},
        {SYS_fcntl, "fcntl"},
        {SYS_read, "read"},
        {SYS_write, "write"},
        {SYS_statx, "statx"},
#ifdef SYS_mkdir
        {SYS_open, "open"},
        {SYS_stat, "stat"},
        {SYS_lstat, "lstat"},
        {SYS_mkdir, "mkdir"},
        {SYS_rmdir, "rmdir"},
        {SYS_unlink, "unlink"},
        {SYS_chmod, "chmod"},
        {SYS_readlink, "readlink"},
        {SYS_access, "access"},
        {SYS_getdents, "getdents"},
#endif
    };
    const auto found = names.find(number);
    return found != names.end() ? std::string(found->second) : "call " + std::to_string(number);
}

} // namespace zolbench
