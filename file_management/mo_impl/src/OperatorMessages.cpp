#include "FileMTransaction.h"
#include "LogForms.h"

namespace ZolFileManagement
{

void FileMTransaction::addThreadContextMessage(const std::string& message)
{
    if (_threadContext == nullptr)
    {
        ZOL_SEVERITY_LOG(3, "FileM ThreadContext is null");
        return;
    }
    if (_threadContext->addMessage(1, message.c_str()) != 0)
    {
        ZOL_SEVERITY_LOG(4, "Failed to add message to thread context message [%s]", message.c_str());
    }
}

} // namespace ZolFileManagement
