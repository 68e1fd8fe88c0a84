#include "FileMTransaction.h"

#include "LogForms.h"

namespace ZolFileManagement
{

std::string FileMTransaction::_fileSystemRoot;

void FileMTransaction::initialize(const std::string& fileSystemRoot)
{
    ZOL_ENTER_TRACE(" >> fileSystemRoot :%s", fileSystemRoot.c_str());
    _fileSystemRoot = fileSystemRoot;
}

FileMTransaction::FileMTransaction(unsigned long txHandle, ZolMgmtSpiInterfacePortal_1& portal)
    : _txHandle(txHandle)
    , _portal(portal)
{
    const ZolMgmtSpiInterface_1 id{"ZolMgmtSpiThreadContextService", "ZolMgmtSpiThreadContext", "2"};
    if (_portal.getInterface(id, reinterpret_cast<ZolMgmtSpiInterface_1**>(&_threadContext)) != 0)
    {
        ZOL_SEVERITY_LOG(3, "Could not get threadContext service");
    }
}

FileMTransaction::~FileMTransaction() = default;

ZolReturnT FileMTransaction::finish() noexcept
{
    _autoMemory.free();
    return 0;
}

} // namespace ZolFileManagement
