#include "filem/output/Pager.h"

#include "filem/output/Interrupt.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace zolhost::filem
{

namespace
{

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

Pager::Pager(std::size_t rows, std::size_t columns)
    : _rows(rows)
    , _columns(columns)
{}

Pager::~Pager()
{
    if (_pager == -1)
    {
        writeAll(STDOUT_FILENO, _held.data(), _held.size());
        return;
    }
    close(_pipe);
    while (waitpid(_pager, nullptr, 0) == -1 && errno == EINTR)
    {}
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
    return 0;
}

void Pager::take(const char* text, std::size_t size)
{
    if (_pager != -1 || _isDirect)
    {
        if (!writeAll(_isDirect ? STDOUT_FILENO : _pipe, text, size))
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
    if (pipe2(ends.data(), O_CLOEXEC) == 0)
    {
        _pipe = ends[1];
        _pager = spawnPager(ends[0], ends[1]);
        close(ends[0]);
    }
    _isDirect = _pager == -1;
    const std::string held = std::move(_held);
    take(held.data(), held.size());
}

} // namespace zolhost::filem
