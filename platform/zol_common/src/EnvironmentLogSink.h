#pragma once

#include <spdlog/logger.h>
#include <zol/common/LogSink.h>

namespace Zol
{

/// Writes each record as one line, at once, to the file that ZOL_LOG_FILE names, otherwise to standard error.
///
/// Fields, separated by tabs: time with microseconds, thread id, call, number, place, text. Control
/// characters of place and text are escaped and backslashes doubled, so that every line is one record.
class EnvironmentLogSink final : public LogSink
{
public:
    EnvironmentLogSink();

    void write(const LogRecord& record) override;

    /// Writes a line about the logging itself.
    void complain(const std::string& text);

private:
    spdlog::logger _logger; // its own, not one of spdlog's registry, which may end before the last line
};

} // namespace Zol
