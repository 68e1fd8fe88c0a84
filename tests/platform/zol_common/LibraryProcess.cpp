#include "LibraryProcess.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <unistd.h>

namespace zoltest
{

ChildOutcome runLibrary(const LibraryCall& call, const std::map<std::string, std::string>& variables)
{
    return runInChild([&] {
        unsetenv("ZOL_LOG_LEVEL");
        unsetenv("ZOL_LOG_FILE");
        for (const auto& [name, value] : variables)
        {
            setenv(name.c_str(), value.c_str(), 1);
        }
        const char* const library = call.library == Library::Logging ? ZOL_LoggingLibrary : ZOL_StaticLoggers;
        execl(ZOL_LibraryHost, ZOL_LibraryHost, library, call.function.c_str(), call.text.c_str(),
              call.end.c_str(), nullptr);
        return 127;
    });
}

std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::istringstream stream(text);
    for (std::string part; std::getline(stream, part, separator);)
    {
        parts.push_back(part);
    }
    return parts;
}

LogLine::LogLine(const std::string& line)
{
    std::vector<std::string> fields = split(line, '\t');
    if (line.ends_with('\t'))
    {
        fields.emplace_back();
    }
    if (fields.size() != 6)
    {
        throw std::runtime_error("a line without six fields: " + line);
    }
    time = fields[0];
    thread = fields[1];
    call = fields[2];
    number = fields[3];
    place = fields[4];
    text = fields[5];
}

std::vector<LogLine> logLines(const std::string& output)
{
    std::vector<LogLine> lines;
    for (const auto& line : split(output, '\n'))
    {
        lines.emplace_back(line);
    }
    return lines;
}

std::vector<std::string> callsOf(const std::string& output)
{
    std::vector<std::string> calls;
    for (const auto& line : logLines(output))
    {
        calls.push_back(line.call + " " + line.number);
    }
    return calls;
}

} // namespace zoltest
