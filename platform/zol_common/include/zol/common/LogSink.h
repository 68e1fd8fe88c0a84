#pragma once

#include <string_view>

namespace Zol
{

/// One call of the logging interface, complete. Its texts are good during LogSink::write only.
struct LogRecord
{
    /// Which of the three was called.
    enum class Call
    {
        Log,    ///< log_printf
        Trace,  ///< trace_printf
        TraceV2 ///< trace_v2_printf
    };

    Call call;              ///< which of the three was called
    unsigned int number;    ///< severity of a log, group of a trace, level of a trace_v2
    unsigned int subsystem; ///< handle of a trace_v2, otherwise 0
    unsigned int category;  ///< category of a log, otherwise 0
    const char* file;       ///< null for a log
    const char* function;   ///< name of the function that writes
    int line;               ///< 0 for a log
    std::string_view text;  ///< one message, with any bytes in it; no null byte ends it
};

/// Where log lines go. Any thread may write at any time, so an implementation serialises by itself.
class LogSink
{
public:
    virtual ~LogSink() = default;
    /// Takes one record, on the thread that logs and maybe with the component's lock held: it must not wait
    /// for another thread that may call the component. An exception loses the line, no more.
    virtual void write(const LogRecord& record) = 0;
};

} // namespace Zol
