#include "support/Process.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <map>
#include <ostream>
#include <poll.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace zoltest
{

namespace
{

void require(bool holds, const char* what, int error = errno)
{
    if (!holds)
    {
        throw std::system_error(error, std::generic_category(), what);
    }
}

class Descriptor
{
public:
    Descriptor(int number, const char* what)
        : _number(number)
    {
        require(_number >= 0, what);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { close(); }

    int number() const { return _number; }
    void close()
    {
        if (_number >= 0)
        {
            ::close(std::exchange(_number, -1));
        }
    }

private:
    int _number;
};

std::array<int, 2> newPipe()
{
    std::array<int, 2> ends{};
    require(pipe2(ends.data(), O_CLOEXEC) == 0, "pipe2");
    return ends;
}

struct Pipe
{
    explicit Pipe(std::array<int, 2> ends = newPipe())
        : reading(ends[0], "pipe")
        , writing(ends[1], "pipe")
    {}

    Descriptor reading;
    Descriptor writing;
};

void writeAll(int descriptor, const std::string& text)
{
    for (std::size_t done = 0; done < text.size();)
    {
        const ssize_t written = write(descriptor, text.data() + done, text.size() - done);
        require(written >= 0, "write");
        done += static_cast<std::size_t>(written);
    }
}

/// Where a process reads `text` from.
class Input
{
public:
    Input(const std::string& text, bool isTerminal)
        : _writing(isTerminal ? posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC) : memfd_create("", MFD_CLOEXEC),
                   "standard input")
        , _reading(isTerminal ? openTerminal(_writing.number())
                              : fcntl(_writing.number(), F_DUPFD_CLOEXEC, 0),
                   "standard input")
    {
        writeAll(_writing.number(), text);
        if (!isTerminal)
        {
            require(lseek(_reading.number(), 0, SEEK_SET) == 0, "lseek");
        }
    }

    int number() const { return _reading.number(); }

private:
    static int openTerminal(int controller)
    {
        require(grantpt(controller) == 0 && unlockpt(controller) == 0, "terminal");
        return open(ptsname(controller), O_RDWR | O_NOCTTY | O_CLOEXEC);
    }

    Descriptor _writing;
    Descriptor _reading;
};

/// What the new process finds as its three standard descriptors and its working directory.
class FileActions
{
public:
    FileActions(const std::string& directory, int in, int out, int err)
    {
        posix_spawn_file_actions_init(&_actions);
        posix_spawn_file_actions_addchdir_np(&_actions, directory.c_str());
        posix_spawn_file_actions_adddup2(&_actions, in, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&_actions, out, STDOUT_FILENO);
        posix_spawn_file_actions_adddup2(&_actions, err, STDERR_FILENO);
    }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    ~FileActions() { posix_spawn_file_actions_destroy(&_actions); }

    const posix_spawn_file_actions_t* get() const { return &_actions; }

private:
    posix_spawn_file_actions_t _actions{};
};

std::vector<std::string> environmentWith(const ProcessSurroundings& surroundings)
{
    std::map<std::string, std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable)
    {
        const std::string text = *variable;
        const auto equals = text.find('=');
        variables[text.substr(0, equals)] = text.substr(equals + 1);
    }
    for (const auto& [name, value] : surroundings.environment)
    {
        variables[name] = value;
    }
    std::vector<std::string> texts;
    for (const auto& [name, value] : variables)
    {
        texts.push_back(name);
        texts.back().append("=").append(value);
    }
    return texts;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (auto& text : texts)
    {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// Reads both to their ends as they come, so that the process never waits for its reader.
void readBoth(int first, std::string& firstText, int second, std::string& secondText)
{
    std::array<pollfd, 2> sources = {{{first, POLLIN, 0}, {second, POLLIN, 0}}};
    const std::array<std::string*, 2> texts = {&firstText, &secondText};
    while (sources[0].fd >= 0 || sources[1].fd >= 0)
    {
        require(poll(sources.data(), sources.size(), -1) >= 0 || errno == EINTR, "poll");
        for (std::size_t i = 0; i < sources.size(); ++i)
        {
            if (sources[i].fd < 0 || sources[i].revents == 0)
            {
                continue;
            }
            std::array<char, 65536> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
            const ssize_t got = read(sources[i].fd, buffer.data(), buffer.size());
            require(got >= 0, "read");
            texts[i]->append(buffer.data(), static_cast<std::size_t>(got));
            if (got == 0)
            {
                sources[i].fd = -1;
            }
        }
    }
}

} // namespace

std::ostream& operator<<(std::ostream& stream, const ProcessOutcome& outcome)
{
    return stream << "exit code " << outcome.exitCode << "\nstandard output:\n"
                  << outcome.out << "standard error:\n"
                  << outcome.err;
}

ProcessOutcome runProcess(const std::vector<std::string>& arguments, const ProcessSurroundings& surroundings)
{
    const Input input(surroundings.input, surroundings.atTerminal);
    Pipe out;
    Pipe err;
    const FileActions actions(surroundings.directory, input.number(), out.writing.number(),
                              err.writing.number());
    auto words = arguments;
    auto variables = environmentWith(surroundings);
    pid_t process = 0;
    const int error = posix_spawn(&process, words.front().c_str(), actions.get(), nullptr,
                                  pointersTo(words).data(), pointersTo(variables).data());
    require(error == 0, words.front().c_str(), error);
    out.writing.close();
    err.writing.close();

    ProcessOutcome outcome;
    readBoth(out.reading.number(), outcome.out, err.reading.number(), outcome.err);
    int status = 0;
    require(waitpid(process, &status, 0) == process, "waitpid");
    outcome.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

} // namespace zoltest
