#include <zol/common/LoggingWrapper.h>

namespace
{

struct LogsAtItsEnd
{
    LogsAtItsEnd() {} // NOLINT(modernize-use-equals-default): it is to be constructed when its library is
    ~LogsAtItsEnd() { Zol::LoggingWrapper::instance().log_printf("staticDestructor", 3, 1, "ends"); }
};

struct LogsAtItsBegin
{
    LogsAtItsBegin() { Zol::LoggingWrapper::instance().log_printf("staticConstructor", 3, 1, "begins"); }
};

// In this order: the log begins after the first object and must still be there when that one ends.
const LogsAtItsEnd logsAtItsEnd;
const LogsAtItsBegin logsAtItsBegin;

} // namespace

extern "C" void doNothing(const char* /*text*/) {}
