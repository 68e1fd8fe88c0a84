#pragma once

#include <iosfwd>
#include <string>
#include <utility>
#include <vector>

namespace zoltest
{

/// How a program ended and what it printed.
struct ProcessOutcome
{
    int exitCode = -1; ///< -1 if a signal ended it
    std::string out;
    std::string err;

    bool operator==(const ProcessOutcome&) const = default;
    friend std::ostream& operator<<(std::ostream& stream, const ProcessOutcome& outcome);
};

struct ProcessSurroundings
{
    std::string input;           ///< what its standard input holds
    bool atTerminal = false;     ///< its standard input is a terminal, at which the input is typed
    std::string directory = "/"; ///< where it runs
    std::vector<std::pair<std::string, std::string>> environment; ///< beside that of this process
};

/// Runs a program with these arguments, the first of which is its path, and waits for its end.
ProcessOutcome runProcess(const std::vector<std::string>& arguments,
                          const ProcessSurroundings& surroundings = {});

} // namespace zoltest
