#pragma once

#include <mutex>
#include <streambuf>
#include <string>
#include <string_view>

namespace zolhost::filem
{

/// What a command has to pass to reach the terminal: closed once the operator has given the command up.
class OutputGate
{
public:
    void open();
    /// Nothing comes through any more when it returns.
    void close();
    void write(int descriptor, std::string_view text);

private:
    std::mutex _mutex; // protects all below
    bool _isOpen = true;
};

/// Output of commands through a gate, line by line.
class GatedBuffer : public std::streambuf
{
public:
    GatedBuffer(OutputGate& gate, int descriptor)
        : _gate(gate)
        , _descriptor(descriptor)
    {}

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

private:
    OutputGate& _gate;
    const int _descriptor;
    std::string _line;
};

} // namespace zolhost::filem
