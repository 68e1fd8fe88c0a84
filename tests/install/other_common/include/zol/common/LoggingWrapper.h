#pragma once

namespace Zol
{

class LoggingWrapper
{
public:
    static LoggingWrapper& instance();

    virtual ~LoggingWrapper();
    virtual int get_level() const;

    void log_printf(const char* function, unsigned int severity, unsigned int category, const char* format,
                    ...);
    void trace_printf(const char* file, const char* function, int line, unsigned int traceGroup,
                      const char* format, ...);
    void trace_v2_printf(unsigned int subsystemHandle, unsigned int traceLevel, const char* file,
                         const char* function, int line, const char* format, ...);
};

} // namespace Zol
