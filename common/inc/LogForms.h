#pragma once

#include <zol/common/LoggingWrapper.h>
#include <zol/common/Trace.h>

// The four forms of a log statement. They are macros because file, function and line are those of the
// statement. Arguments are evaluated only when the statement is emitted, and then once for each of its two
// calls.

#define ZOL_TRACE_FORM(TRACE_GROUP, SUBSYSTEM, ...)                                                          \
    do                                                                                                       \
    {                                                                                                        \
        if (auto& zolLog = ::Zol::LoggingWrapper::instance(); zolLog.get_level() > 7)                        \
        {                                                                                                    \
            zolLog.trace_printf(__FILE__, __func__, __LINE__, TRACE_GROUP, __VA_ARGS__);                     \
            zolLog.trace_v2_printf(SUBSYSTEM, 14, __FILE__, __func__, __LINE__, __VA_ARGS__);                \
        }                                                                                                    \
    } while (false)

#define ZOL_ENTER_TRACE(...) ZOL_TRACE_FORM(9, ::Zol::Trace::FileM, __VA_ARGS__)
#define ZOL_EXIT_TRACE(...) ZOL_TRACE_FORM(10, ::Zol::Trace::FileM, __VA_ARGS__)
#define ZOL_PLAIN_TRACE(...) ZOL_TRACE_FORM(0, ::Zol::Trace::FileM, __VA_ARGS__)

#define ZOL_SEVERITY_LOG(SEVERITY, ...)                                                                      \
    do                                                                                                       \
    {                                                                                                        \
        if (auto& zolLog = ::Zol::LoggingWrapper::instance(); zolLog.get_level() > (SEVERITY)-1)             \
        {                                                                                                    \
            zolLog.log_printf(__func__, SEVERITY, 1, __VA_ARGS__);                                           \
            zolLog.trace_v2_printf(::Zol::Trace::FileM, SEVERITY, __FILE__, __func__, __LINE__,              \
                                   __VA_ARGS__);                                                             \
        }                                                                                                    \
    } while (false)
