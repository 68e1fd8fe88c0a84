#pragma once

#include <atomic>
#include <cstdarg>
#include <memory>
#include <zol/common/LogSink.h>

namespace Zol
{

/// The process's log. Every call becomes one record for the sink, if the level lets it through: a log of
/// severity N and a trace_v2 of level N from level N on, everything above 7 and every trace from level 8 on.
/// A call below the level costs a comparison. Any thread may call anything at any time.
///
/// Level and sink come from the environment when the log is first used: ZOL_LOG_LEVEL (a number from 0,
/// otherwise 4) and ZOL_LOG_FILE (the file that lines are appended to, otherwise standard error).
class LoggingWrapper
{
public:
    /// The one object, made by the first call.
    static LoggingWrapper& instance();

    LoggingWrapper(const LoggingWrapper&) = delete;
    LoggingWrapper& operator=(const LoggingWrapper&) = delete;
    ~LoggingWrapper();

    /// The level that calls are compared with.
    int get_level() const { return _level.load(std::memory_order_relaxed); }
    /// Sets it, from the next call on: 0 lets nothing through, 3 errors, 4 also warnings, 8 everything.
    void set_level(int level);

    /// Sends all that follows to the host's own sink; null goes back to the one from the environment.
    void set_sink(std::shared_ptr<LogSink> sink);

    /// Logs for engineers; severity 3 is an error, 4 a warning.
    void log_printf(const char* function, unsigned int severity, unsigned int category, const char* format,
                    ...) __attribute__((format(printf, 5, 6)));
    /// Traces; the group is 9 at the entry of a function, 10 at its exit and otherwise 0.
    void trace_printf(const char* file, const char* function, int line, unsigned int traceGroup,
                      const char* format, ...) __attribute__((format(printf, 6, 7)));
    /// Traces for a subsystem, a Trace::Subsystem; the level is a severity, or 14 for a trace.
    void trace_v2_printf(unsigned int subsystemHandle, unsigned int traceLevel, const char* file,
                         const char* function, int line, const char* format, ...)
        __attribute__((format(printf, 7, 8)));

private:
    LoggingWrapper();

    void write(LogRecord record, const char* format, std::va_list arguments);

    std::atomic<int> _level;
    std::shared_ptr<LogSink> _environmentSink; // constant after construction
    std::shared_ptr<LogSink> _sink;            // accessed with std::atomic_load and std::atomic_store only
};

} // namespace Zol
