#include "engine/CodeMeaning.h"

#include "engine/Refusal.h"
#include "engine/ThreadContext.h"

namespace zolhost
{

namespace
{

struct Meaning
{
    Operation operation;
    ZolReturnT code;
    const char* text;
};

constexpr Meaning MEANINGS[] = {
    {Operation::Join, ZolReturnNoSuch, "the transaction isn't known"},
    {Operation::Commit, ZolReturnFailure,
     "a step failed; what was done before it stays, the rest is forgotten"},
    {Operation::Commit, ZolReturnNoSuch, "the transaction isn't known"},
    {Operation::List, ZolReturnFailure, "there are no children of this class"},
    {Operation::List, ZolReturnNoSuch, "the transaction isn't known"},
    {Operation::Count, ZolReturnNoSuch, "the transaction isn't known"},
    {Operation::Exists, ZolReturnNoSuch, "the transaction isn't known"},
    {Operation::Read, ZolReturnFailure, "the directory can't be read, or a link in it leads nowhere"},
    {Operation::Read, ZolReturnNoSuch, "no such object"},
    {Operation::Create, ZolReturnFailure, "no such object can be created there"},
    {Operation::Delete, ZolReturnFailure, "it is a symbolic link, or there are files in it or below"},
    {Operation::Delete, ZolReturnNoSuch, "no such object"},
    {Operation::Remove, ZolReturnFailure, "it is a symbolic link"},
    {Operation::Remove, ZolReturnNoSuch, "the component has no such action"},
    {Operation::RemoveFile, ZolReturnNoSuch, "the component has no such action"},
    {Operation::RemoveFile, ZolReturnWrongParameters, "the action takes one text"},
};

bool meansNoSuchObject(Operation operation, ZolReturnT code)
{
    return code == ZolReturnNoSuch && (operation == Operation::Read || operation == Operation::Delete);
}

std::string messagesOfThread()
{
    std::string joined;
    for (const auto& message : ThreadContext::take())
    {
        joined += (joined.empty() ? "" : "; ") + message;
    }
    return joined;
}

} // namespace

std::string meaningOf(Operation operation, ZolReturnT code)
{
    for (const auto& meaning : MEANINGS)
    {
        if (meaning.operation == operation && meaning.code == code)
        {
            return meaning.text;
        }
    }
    return "the component answers with code " + std::to_string(code);
}

void refuseByCode(Operation operation, const std::string& dn, ZolReturnT code)
{
    const std::string messages = messagesOfThread();
    throw Refusal(meansNoSuchObject(operation, code) ? Refusal::Kind::NoSuchObject : Refusal::Kind::Failed,
                  dn, messages.empty() ? meaningOf(operation, code) : messages, messages.empty());
}

} // namespace zolhost
