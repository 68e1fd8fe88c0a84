#include "FileMTransaction.h"

#include "LiteralPath.h"
#include "LogForms.h"

namespace ZolFileManagement
{

std::string FileMTransaction::_fileSystemRoot;
std::string FileMTransaction::_rootDirectory = "/";

void FileMTransaction::initialize(const std::string& fileSystemRoot)
{
    ZOL_ENTER_TRACE(" >> fileSystemRoot :%s", fileSystemRoot.c_str());
    _fileSystemRoot = fileSystemRoot;
    _rootDirectory = literalPath(fileSystemRoot + "/").toString();
}

FileMTransaction::FileMTransaction(unsigned long txHandle, ZolMgmtSpiInterfacePortal_1& portal)
    : _txHandle(txHandle)
    , _portal(portal)
{
    const ZolMgmtSpiInterface_1 id{"ZolMgmtSpiThreadContextService", "ZolMgmtSpiThreadContext", "2"};
    ZolMgmtSpiInterface_1* found = nullptr;
    if (_portal.getInterface(id, &found) != 0)
    {
        ZOL_SEVERITY_LOG(3, "Could not get threadContext service");
        return;
    }
    _threadContext = reinterpret_cast<ZolMgmtSpiThreadContext*>(found);
}

FileMTransaction::~FileMTransaction() = default;

ZolReturnT FileMTransaction::finish() noexcept
{
    _autoMemory.free();
    return 0;
}

} // namespace ZolFileManagement
