#include "EnvironmentLogSink.h"

#include <cstdlib>
#include <fcntl.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_sinks.h>
#include <string>

namespace Zol
{

namespace
{

const char* nameOf(LogRecord::Call call)
{
    switch (call)
    {
    case LogRecord::Call::Log:
        return "log";
    case LogRecord::Call::Trace:
        return "trace";
    case LogRecord::Call::TraceV2:
        return "trace_v2";
    }
    return "";
}

void appendEscaped(std::string& line, std::string_view text)
{
    constexpr std::string_view HEX_DIGITS = "0123456789abcdef";
    for (const char character : text)
    {
        const auto code = static_cast<unsigned char>(character);
        switch (character)
        {
        case '\\':
            line += "\\\\";
            break;
        case '\n':
            line += "\\n";
            break;
        case '\r':
            line += "\\r";
            break;
        case '\t':
            line += "\\t";
            break;
        default:
            if (code < 0x20 || code == 0x7f)
            {
                line += "\\x";
                line += HEX_DIGITS[code >> 4U];
                line += HEX_DIGITS[code & 0xfU];
            }
            else
            {
                line += character;
            }
        }
    }
}

std::shared_ptr<spdlog::sinks::sink> openFile(const char* path)
{
    spdlog::file_event_handlers handlers;
    // commands that a component runs have no business with the log
    handlers.after_open = [](const spdlog::filename_t&, std::FILE* file) {
        fcntl(fileno(file), F_SETFD, FD_CLOEXEC);
    };
    return std::make_shared<spdlog::sinks::basic_file_sink_mt>(path, false, handlers);
}

} // namespace

EnvironmentLogSink::EnvironmentLogSink()
    : _logger("zol", std::make_shared<spdlog::sinks::stderr_sink_mt>())
{
    std::string problem;
    if (const char* const path = std::getenv("ZOL_LOG_FILE"); path != nullptr && *path != '\0')
    {
        try
        {
            _logger.sinks().front() = openFile(path);
        }
        catch (const spdlog::spdlog_ex& failure)
        {
            problem = failure.what();
        }
    }
    _logger.set_pattern("%Y-%m-%dT%H:%M:%S.%f%z\t%t\t%v");
    _logger.flush_on(spdlog::level::info);
    if (!problem.empty())
    {
        complain("ZOL_LOG_FILE can't be used, lines go to standard error: " + problem);
    }
}

void EnvironmentLogSink::write(const LogRecord& record)
{
    std::string line = nameOf(record.call);
    line += '\t';
    line += std::to_string(record.number);
    line += '\t';
    if (record.file != nullptr)
    {
        appendEscaped(line, record.file);
        line += ':';
        line += std::to_string(record.line);
        line += ' ';
    }
    appendEscaped(line, record.function);
    line += '\t';
    appendEscaped(line, record.text);
    _logger.log(spdlog::level::info, line);
}

void EnvironmentLogSink::complain(const std::string& text)
{
    LogRecord record{};
    record.call = LogRecord::Call::Log;
    record.number = 4;
    record.function = "LoggingWrapper";
    record.text = text;
    write(record);
}

} // namespace Zol
