#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

namespace zolbench
{

/// A program whose standard input is written here and whose standard output is read here. It is to end when
/// its input does, which is at the end of the object's life at the latest.
class PipedProcess
{
public:
    /// The first argument is the program, looked for as a shell does it.
    explicit PipedProcess(std::vector<std::string> arguments);
    PipedProcess(const PipedProcess&) = delete;
    PipedProcess& operator=(const PipedProcess&) = delete;
    ~PipedProcess();

    void write(const char* data, std::size_t size) const;
    void closeInput();
    std::size_t read(char* data, std::size_t most) const; ///< 0 at the end

private:
    int _input;
    int _output;
    pid_t _process = 0;
};

} // namespace zolbench
