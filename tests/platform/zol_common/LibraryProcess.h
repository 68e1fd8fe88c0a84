#pragma once

#include "support/ChildProcess.h"

#include <map>
#include <string>
#include <vector>

namespace zoltest
{

enum class Library
{
    Logging,
    StaticLoggers
};

/// What a fresh process does with a library: which function it calls with which text and how it ends.
struct LibraryCall
{
    Library library = Library::Logging;
    std::string function = "logEachCall";
    std::string text = "text";
    std::string end = "exit";
};

/// Runs it in an environment with these variables of the log and no others.
ChildOutcome runLibrary(const LibraryCall& call, const std::map<std::string, std::string>& variables = {});

/// The parts of `text` between the separators; the last one only if it isn't empty.
std::vector<std::string> split(const std::string& text, char separator);

/// The tab-separated fields of a line of the environment's sink.
struct LogLine
{
    explicit LogLine(const std::string& line);

    std::string time;
    std::string thread;
    std::string call;
    std::string number;
    std::string place;
    std::string text;
};

std::vector<LogLine> logLines(const std::string& output);

/// "call number" of each line.
std::vector<std::string> callsOf(const std::string& output);

} // namespace zoltest
