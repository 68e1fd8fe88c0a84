#include "OnThreads.h"

#include <Poco/DOM/NodeList.h>
#include <cstdlib>
#include <memory>
#include <string>
#include <zol/common/LoggingWrapper.h>
#include <zol/common/RegularExpression.h>
#include <zol/common/ZolConfiguration.h>

namespace
{

using Zol::LoggingWrapper;

class SilentSink : public Zol::LogSink
{
public:
    void write(const Zol::LogRecord& /*record*/) override {}
};

} // namespace

extern "C" void logEachCall(const char* text)
{
    auto& log = LoggingWrapper::instance();
    log.log_printf("aFunction", 3, 1, "%s", text);
    log.log_printf("aFunction", 4, 1, "%s", text);
    log.log_printf("aFunction", 5, 1, "%s", text);
    log.trace_printf("folder/File.cpp", "aFunction", 42, 9, "%s", text);
    log.trace_v2_printf(2, 14, "folder/File.cpp", "aFunction", 42, "%s", text);
}

extern "C" void logOneLine(const char* text)
{
    LoggingWrapper::instance().log_printf("aFunction", 3, 1, "%s", text);
}

extern "C" void logNullByte(const char* text)
{
    LoggingWrapper::instance().log_printf("aFunction", 3, 1, "%s%c%s", text, 0, text);
}

extern "C" void logPlaceWithControlCharacters(const char* text)
{
    LoggingWrapper::instance().trace_printf("a\tfile\n.cpp", "a\\function", 1, 0, "%s", text);
}

/// 8 threads of 250 lines each: "text thread line".
extern "C" void logFromThreads(const char* text)
{
    zoltest::onThreads(8, [text](int thread) {
        for (int line = 0; line < 250; ++line)
        {
            LoggingWrapper::instance().log_printf("aFunction", 3, 1, "%s %d %d", text, thread, line);
        }
    });
}

extern "C" void logAroundAnotherSink(const char* text)
{
    auto& log = LoggingWrapper::instance();
    log.log_printf("aFunction", 3, 1, "before %s", text);
    log.set_sink(std::make_shared<SilentSink>());
    log.log_printf("aFunction", 3, 1, "to the other sink %s", text);
    log.set_sink(nullptr);
    log.log_printf("aFunction", 3, 1, "after %s", text);
}

/// Shows the open files of a command on standard error.
extern "C" void logAndRunCommand(const char* text)
{
    logOneLine(text);
    if (std::system("readlink /proc/self/fd/* >&2; true") != 0)
    {
        std::abort();
    }
}

/// Uses what the companion library builds on other libraries.
extern "C" void useEverything(const char* text)
{
    logEachCall(text);
    const Zol::RegularExpression expression("^a+$", 9);
    Zol::ZolConfiguration configuration;
    configuration.load("<root><value>text</value></root>");
    Poco::XML::NodeList* const list = configuration.getElementsByTagName("value");
    const std::string value = configuration.get_text(static_cast<Poco::XML::Element*>(list->item(0)));
    list->release();
    try
    {
        configuration.load("<root>");
    }
    catch (const std::exception& failure)
    {
        logOneLine(failure.what());
    }
    if (!expression.match("aa", 0) || value != "text")
    {
        std::abort();
    }
}
