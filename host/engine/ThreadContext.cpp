#include "engine/ThreadContext.h"

#include <exception>
#include <utility>

namespace zolhost
{

namespace
{

thread_local std::vector<std::string> messages;

ZolReturnT addMessage(uint32_t /*category*/, const char* text)
{
    try
    {
        messages.emplace_back(text);
        return ZolReturnOk;
    }
    catch (const std::exception&)
    {
        return ZolReturnFailure;
    }
}

ZolMgmtSpiThreadContext threadContext = {"ZolMgmtSpiThreadContextService", "ZolMgmtSpiThreadContext", "2",
                                         addMessage};

} // namespace

ZolMgmtSpiThreadContext* ThreadContext::table()
{
    return &threadContext;
}

std::vector<std::string> ThreadContext::take()
{
    return std::exchange(messages, {});
}

} // namespace zolhost
