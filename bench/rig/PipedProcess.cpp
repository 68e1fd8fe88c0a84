#include "rig/PipedProcess.h"

#include "ways/Require.h"

#include <algorithm>
#include <array>
#include <fcntl.h>
#include <iterator>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace zolbench
{

namespace
{

std::array<int, 2> newPipe()
{
    std::array<int, 2> ends{};
    require(::pipe2(ends.data(), O_CLOEXEC) == 0, "pipe2");
    return ends;
}

} // namespace

PipedProcess::PipedProcess(std::vector<std::string> arguments)
{
    const auto [theirInput, ourInput] = newPipe();
    const auto [ourOutput, theirOutput] = newPipe();
    posix_spawn_file_actions_t actions{};
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, theirInput, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, theirOutput, STDOUT_FILENO);
    std::vector<char*> words;
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(words),
                   [](std::string& argument) { return argument.data(); });
    words.push_back(nullptr);
    const int error = ::posix_spawnp(&_process, words.front(), &actions, nullptr, words.data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(theirInput);
    ::close(theirOutput);
    _input = ourInput;
    _output = ourOutput;
    errno = error;
    require(error == 0, words.front());
}

PipedProcess::~PipedProcess()
{
    closeInput();
    ::close(_output);
    int status = 0;
    ::waitpid(_process, &status, 0);
}

void PipedProcess::write(const char* data, std::size_t size) const
{
    while (size > 0)
    {
        const ssize_t written = ::write(_input, data, size);
        require(written > 0, "write");
        data += written;
        size -= static_cast<std::size_t>(written);
    }
}

void PipedProcess::closeInput()
{
    if (_input >= 0)
    {
        ::close(std::exchange(_input, -1));
    }
}

std::size_t PipedProcess::read(char* data, std::size_t most) const
{
    const ssize_t got = ::read(_output, data, most);
    require(got >= 0, "read");
    return static_cast<std::size_t>(got);
}

} // namespace zolbench
