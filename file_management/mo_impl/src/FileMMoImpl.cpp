#include "FileMMoImpl.h"

#include "FileMTransaction.h"
#include "LogForms.h"

namespace ZolFileManagement
{

FileMMoImpl::FileMMoImpl() = default;

FileMMoImpl::~FileMMoImpl()
{
    for (const auto& [txHandle, transaction] : _transactions)
    {
        delete transaction;
    }
}

void FileMMoImpl::initialize(const std::string& directoryPart, const std::string& leafPart,
                             ZolMgmtSpiInterfacePortal_1* portal, ZolOamSpiTransaction_1* transaction,
                             ZolOamSpiTransactionalResource_1* resource)
{
    ZOL_ENTER_TRACE(" >> ");
    _portal = portal;
    _resourceInterface = resource;
    _transactionInterface = transaction;
    FileMTransaction::initialize(directoryPart + "/" + leafPart);
    ZOL_EXIT_TRACE(" << ");
}

FileMTransaction* FileMMoImpl::findTransaction(unsigned long txHandle) const
{
    const auto found = _transactions.find(txHandle);
    return found != _transactions.end() ? found->second : nullptr;
}

} // namespace ZolFileManagement
