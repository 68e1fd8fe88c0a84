#include "filem/output/Pager.h"

#include "filem/output/Interrupt.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <mutex>
#include <ostream>
#include <spawn.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace zolhost::filem
{

namespace
{

std::mutex processMutex;
pid_t process = 0; // protected by it: of the pager; 0 if there is none

bool writeAll(int descriptor, const char* text, std::size_t size)
{
    while (size > 0)
    {
        const ssize_t written = write(descriptor, text, size);
        if (written < 0 && errno == EINTR)
        {
            continue;
        }
        if (written <= 0)
        {
            return false;
        }
        text += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

std::string pagerCommand()
{
    const char* const wanted = std::getenv("PAGER"); // NOLINT(concurrency-mt-unsafe): nobody sets it
    return wanted != nullptr && *wanted != '\0' ? wanted : "less -R";
}

/// Whether the program is there that the command begins with. A shell would say that it isn't, and take
/// nothing.
bool isThere(const std::string& command)
{
    const std::string program = command.substr(0, command.find(' '));
    if (program.find('/') != std::string::npos)
    {
        return access(program.c_str(), X_OK) == 0;
    }
    if (program.find('=') != std::string::npos)
    {
        return true; // a variable for a program that only the shell finds
    }
    const char* const path = std::getenv("PATH"); // NOLINT(concurrency-mt-unsafe): nobody sets it
    std::istringstream folders(path == nullptr ? "/usr/bin:/bin" : path);
    for (std::string folder; std::getline(folders, folder, ':');)
    {
        if (access((std::filesystem::path(folder) / program).c_str(), X_OK) == 0)
        {
            return true;
        }
    }
    return false;
}

/// -1 if it can't be started. It doesn't inherit that SIGINT and SIGPIPE are caught or ignored.
pid_t spawnPager(int input, int otherEnd)
{
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, input, STDIN_FILENO);
    posix_spawn_file_actions_addclose(&files, otherEnd);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    posix_spawnattr_setsigdefault(&attributes, &signals);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF);
    std::string shell = "/bin/sh";
    std::string option = "-c";
    std::string command = pagerCommand();
    std::array<char*, 4> arguments = {shell.data(), option.data(), command.data(), nullptr};
    pid_t child = -1;
    const int error = posix_spawn(&child, shell.c_str(), &files, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&files);
    return error == 0 ? child : -1;
}

} // namespace

Pager::Pager(std::ostream& screen, std::size_t rows, std::size_t columns)
    : _screen(screen)
    , _rows(rows)
    , _columns(columns)
{}

Pager::~Pager()
{
    if (!_hasPager)
    {
        if (!interrupt::isRequested())
        {
            _screen << _held << std::flush;
        }
        return;
    }
    close(_pipe);
    // without the lock, as it takes until the operator leaves; only this thread ever changes the number
    siginfo_t end = {};
    while (waitid(P_PID, static_cast<id_t>(process), &end, WEXITED | WNOWAIT) == -1 && errno == EINTR)
    {}
    const std::scoped_lock lock(processMutex);
    waitpid(process, nullptr, 0);
    process = 0;
    sigaction(SIGPIPE, &_beforePipe, nullptr);
}

bool Pager::isAtWork()
{
    const std::scoped_lock lock(processMutex);
    siginfo_t end = {};
    return process != 0 &&
           waitid(P_PID, static_cast<id_t>(process), &end, WEXITED | WNOWAIT | WNOHANG) == 0 &&
           end.si_pid == 0;
}

void Pager::stop()
{
    const std::scoped_lock lock(processMutex);
    if (process != 0)
    {
        kill(process, SIGTERM);
    }
}

Pager::int_type Pager::overflow(int_type character)
{
    if (!traits_type::eq_int_type(character, traits_type::eof()))
    {
        const char single = traits_type::to_char_type(character);
        take(&single, 1);
    }
    return traits_type::not_eof(character);
}

std::streamsize Pager::xsputn(const char* text, std::streamsize size)
{
    take(text, static_cast<std::size_t>(size));
    return size;
}

int Pager::sync()
{
    if (_isDirect)
    {
        _screen.flush();
    }
    return 0;
}

void Pager::take(const char* text, std::size_t size)
{
    if (interrupt::isRequested())
    {
        return;
    }
    if (_isDirect)
    {
        _screen.write(text, static_cast<std::streamsize>(size));
        return;
    }
    if (_hasPager)
    {
        if (!writeAll(_pipe, text, size))
        {
            interrupt::request();
        }
        return;
    }
    _held.append(text, size);
    for (std::size_t i = 0; i < size; ++i)
    {
        _column = text[i] == '\n' ? 0 : _column + 1;
        if (text[i] == '\n' || _column > _columns)
        {
            ++_line;
            _column = text[i] == '\n' ? 0 : 1;
        }
    }
    // the prompt takes a line too
    if (_line + 1 > _rows)
    {
        start();
    }
}

void Pager::start()
{
    std::array<int, 2> ends{};
    if (isThere(pagerCommand()) && pipe2(ends.data(), O_CLOEXEC) == 0)
    {
        _pipe = ends[1];
        const pid_t spawned = spawnPager(ends[0], ends[1]);
        close(ends[0]);
        _hasPager = spawned != -1;
        if (_hasPager)
        {
            struct sigaction ignore = {};
            ignore.sa_handler = SIG_IGN;
            sigaction(SIGPIPE, &ignore, &_beforePipe);
            const std::scoped_lock lock(processMutex);
            process = spawned;
        }
        else
        {
            close(_pipe);
        }
    }
    _isDirect = !_hasPager;
    const std::string held = std::exchange(_held, {});
    take(held.data(), held.size());
}

} // namespace zolhost::filem
