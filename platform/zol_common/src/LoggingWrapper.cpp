#include "EnvironmentLogSink.h"
#include "FormatText.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <mutex>
#include <string>
#include <zol/common/LoggingWrapper.h>
#include <zol/common/ZolThreadLock.h>

namespace Zol
{

namespace
{

constexpr int DEFAULT_LEVEL = 4;
constexpr int TRACE_LEVEL = 8;

// Constant-initialised, so that static objects of other libraries log whatever the order of their lives.
constinit std::atomic<LoggingWrapper*> theInstance{nullptr};
constinit ZolThreadLock creation;

/// Runs when the library is unloaded or, at the end of the process, after the destructors of all static
/// objects, which log too.
__attribute__((destructor)) void destroyInstance()
{
    delete theInstance.exchange(nullptr);
}

bool letsThrough(int level, unsigned int number)
{
    return level >= static_cast<int>(std::min<unsigned int>(number, TRACE_LEVEL));
}

int levelFromEnvironment(EnvironmentLogSink& sink)
{
    const char* const text = std::getenv("ZOL_LOG_LEVEL");
    if (text == nullptr || *text == '\0')
    {
        return DEFAULT_LEVEL;
    }
    const std::string digits = text;
    if (digits.find_first_not_of("0123456789") != std::string::npos)
    {
        sink.complain("ZOL_LOG_LEVEL is \"" + digits + "\", not a number from 0 on: level " +
                      std::to_string(DEFAULT_LEVEL) + " is used");
        return DEFAULT_LEVEL;
    }
    int level = std::numeric_limits<int>::max(); // stays if the number is greater still
    std::from_chars(digits.data(), digits.data() + digits.size(), level);
    return level;
}

} // namespace

LoggingWrapper& LoggingWrapper::instance()
{
    LoggingWrapper* wrapper = theInstance.load(std::memory_order_acquire);
    if (wrapper == nullptr)
    {
        const std::scoped_lock lock(creation);
        wrapper = theInstance.load(std::memory_order_relaxed);
        if (wrapper == nullptr)
        {
            wrapper = new LoggingWrapper;
            theInstance.store(wrapper, std::memory_order_release);
        }
    }
    return *wrapper;
}

LoggingWrapper::LoggingWrapper()
{
    const auto sink = std::make_shared<EnvironmentLogSink>();
    _level = levelFromEnvironment(*sink);
    _environmentSink = sink;
    _sink = sink;
}

LoggingWrapper::~LoggingWrapper() = default;

void LoggingWrapper::set_level(int level)
{
    _level.store(level, std::memory_order_relaxed);
}

void LoggingWrapper::set_sink(std::shared_ptr<LogSink> sink)
{
    std::atomic_store(&_sink, sink != nullptr ? std::move(sink) : _environmentSink);
}

void LoggingWrapper::log_printf(const char* function, unsigned int severity, unsigned int category,
                                const char* format, ...)
{
    if (letsThrough(get_level(), severity))
    {
        std::va_list arguments;
        va_start(arguments, format);
        write({LogRecord::Call::Log, severity, 0, category, nullptr, function, 0, {}}, format, arguments);
        va_end(arguments);
    }
}

void LoggingWrapper::trace_printf(const char* file, const char* function, int line, unsigned int traceGroup,
                                  const char* format, ...)
{
    if (letsThrough(get_level(), TRACE_LEVEL))
    {
        std::va_list arguments;
        va_start(arguments, format);
        write({LogRecord::Call::Trace, traceGroup, 0, 0, file, function, line, {}}, format, arguments);
        va_end(arguments);
    }
}

void LoggingWrapper::trace_v2_printf(unsigned int subsystemHandle, unsigned int traceLevel, const char* file,
                                     const char* function, int line, const char* format, ...)
{
    if (letsThrough(get_level(), traceLevel))
    {
        std::va_list arguments;
        va_start(arguments, format);
        write({LogRecord::Call::TraceV2, traceLevel, subsystemHandle, 0, file, function, line, {}}, format,
              arguments);
        va_end(arguments);
    }
}

void LoggingWrapper::write(LogRecord record, const char* format, std::va_list arguments)
{
    // a statement's arguments are evaluated for each of its calls, and errno may be among them
    const int callersErrno = errno;
    try
    {
        const std::string text = formatText(format, arguments);
        record.text = text;
        std::atomic_load(&_sink)->write(record);
    }
    catch (...)
    {
        // a line is lost rather than its caller, which may be one that must not throw
    }
    errno = callersErrno;
}

} // namespace Zol
