#pragma once

#include <string_view>

namespace Zol
{

/// One call of the logging interface, complete. Its texts are good during LogSink::write only.
struct LogRecord
{
    enum class Call
    {
        Log,
        Trace,
        TraceV2
    };

    Call call;
    unsigned int number;    ///< severity of a log, group of a trace, level of a trace_v2
    unsigned int subsystem; ///< handle of a trace_v2, otherwise 0
    unsigned int category;  ///< category of a log, otherwise 0
    const char* file;       ///< null for a log
    const char* function;
    int line; ///< 0 for a log
    std::string_view text;
};

/// Where log lines go. Any thread may write at any time, so an implementation serialises by itself.
class LogSink
{
public:
    virtual ~LogSink() = default;
    virtual void write(const LogRecord& record) = 0;
};

} // namespace Zol
