#pragma once

#include <csignal>
#include <cstddef>
#include <iosfwd>
#include <streambuf>
#include <string>
#include <sys/types.h>

namespace zolhost::filem
{

/// Standard output of one command at a terminal: what fits on the screen is printed, and as soon as it
/// doesn't, all goes to the pager, $PAGER or less. Interrupts the command when the operator leaves the pager.
class Pager : public std::streambuf
{
public:
    /// `screen` gets what needs no pager, of so many lines and columns; it must outlive this.
    Pager(std::ostream& screen, std::size_t rows, std::size_t columns);
    Pager(const Pager&) = delete;
    Pager& operator=(const Pager&) = delete;
    /// Waits until the operator has left the pager.
    ~Pager() override;

    /// Whether there was more than what fits, and a pager for it.
    bool hasBegun() const { return _hasPager; }

    /// Whether a pager has the terminal, and with it Ctrl-C. Any thread may call these two.
    static bool isAtWork();
    static void stop(); ///< has it leave

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize size) override;
    int sync() override;

private:
    void take(const char* text, std::size_t size);
    void start();

    std::ostream& _screen;
    const std::size_t _rows;
    const std::size_t _columns;
    std::string _held; // what waits until it is known whether it fits
    std::size_t _line = 0;
    std::size_t _column = 0;
    int _pipe = -1;
    bool _hasPager = false;
    struct sigaction _beforePipe = {};
    bool _isDirect = false; // there is no pager to be had
};

} // namespace zolhost::filem
